#include "tests/cpp/strata/plugins/broken_unit.hpp"

STRATA_PLUGIN(registry) {
    registry.add_unit("test.half", std::make_unique<broken_unit>());
    registry.add_unit("test.unit", std::make_unique<broken_unit>()); // taken by the plugin "good"
}
