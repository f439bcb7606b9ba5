#include "tests/cpp/strata/plugins/broken_unit.hpp"

STRATA_PLUGIN(registry) { registry.add_importer("test.null", nullptr); }
