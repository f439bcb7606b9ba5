#include "tests/cpp/strata/plugins/broken_unit.hpp"

STRATA_PLUGIN(registry) {
    registry.add_unit("test.half", std::make_unique<broken_unit>());
    try {
        registry.add_unit("test.half", std::make_unique<broken_unit>());
    } catch (...) { // hides its failure from the host
    }
}
