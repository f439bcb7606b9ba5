#include "platform/strata/src/plugins/plugin_rights.hpp"

namespace strata::detail {

std::string require_trusted_place(const std::filesystem::path&) { return {}; }

} // namespace strata::detail
