#pragma once

#include <anvil/application_core.hpp>
#include <anvil/logging.hpp>
#include <strata/plugin_manager.hpp>

namespace mox {

/// The process's one application: identity, log file, logger registry, plugins. Reached through
/// anvil::application_core::instance() by everything that only needs its identity.
class application final : public anvil::application_core {
  public:
    application();
    ~application() override;

    [[nodiscard]] strata::plugin_manager& plugins() noexcept { return plugins_; }

  private:
    anvil::logger_registry loggers_;
    strata::plugin_manager plugins_;
};

/// The application, created by the first call and destroyed when the process exits.
[[nodiscard]] application& the_application();

/// The module's logger "tidepool", created by the first call, which the application must precede.
[[nodiscard]] std::shared_ptr<anvil::log_stream> module_logger();

/// Writes a line to the module's logger.
void log(anvil::log_level level, std::string_view text);

} // namespace mox
