#include "store/store_log.hpp"

#include <anvil/logging.hpp>
#include <strata/strata_logger.hpp>

namespace mox {

void log_store_failure(std::string_view text) noexcept {
    auto logger = get_strata_logger();
    anvil::log_line(*logger, anvil::log_level::error, text);
}

} // namespace mox
