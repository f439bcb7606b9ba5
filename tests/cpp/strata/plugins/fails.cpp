#include "tests/cpp/strata/plugins/broken_unit.hpp"

// Answers that it failed, without a reason.
extern "C" STRATA_PLUGIN_EXPORT std::uint32_t strata_plugin_entry(strata::plugin_registry* registry,
                                                                  std::uint32_t) {
    registry->add_unit("test.half", std::make_unique<broken_unit>());
    return 0;
}
