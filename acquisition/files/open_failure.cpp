#include "acquisition/files/open_failure.hpp"

#include <anvil/logging.hpp>
#include <fmt/format.h>
#include <strata/strata_logger.hpp>

#include "store/swig_error.hpp"

namespace mox {

void throw_open_failure(const std::string& text, const std::error_code& reason) {
    // Kept: scripts compare the text, which has no reason.
    anvil::log_line(*get_strata_logger(), anvil::log_level::error,
                    fmt::format("{}: {}", text, reason.message()));
    throw_runtime_error(text);
}

} // namespace mox
