#pragma once

#include <memory>

#include <anvil/logging.hpp>

#include <strata/export.hpp>

/// The data store's logger, "strata".
[[nodiscard]] STRATA_EXPORT std::shared_ptr<anvil::log_stream> get_strata_logger();
