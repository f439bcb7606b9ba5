#include <stdexcept>

#include "tests/cpp/strata/plugins/broken_unit.hpp"

namespace {

class own_failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace

// Not made with STRATA_PLUGIN, which lets nothing out.
extern "C" STRATA_PLUGIN_EXPORT std::uint32_t strata_plugin_entry(strata::plugin_registry*,
                                                                  std::uint32_t) {
    throw own_failure{"nobody catches this"};
}
