#include <stdexcept>

#include "tests/cpp/strata/plugins/broken_unit.hpp"

STRATA_PLUGIN(registry) {
    registry.add_unit("test.half", std::make_unique<broken_unit>());
    throw std::runtime_error{"the licence is missing"};
}
