#include "tests/cpp/strata/plugins/broken_unit.hpp"

// What a plugin compiled against version 99 answers; it offers something all the same.
extern "C" STRATA_PLUGIN_EXPORT std::uint32_t strata_plugin_entry(strata::plugin_registry* registry,
                                                                  std::uint32_t) {
    registry->add_unit("test.half", std::make_unique<broken_unit>());
    return 99;
}
