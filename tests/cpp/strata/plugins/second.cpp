#include "tests/cpp/strata/plugins/broken_unit.hpp"

STRATA_PLUGIN(registry) { registry.add_unit("test.second", std::make_unique<broken_unit>()); }
