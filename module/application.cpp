#include "module/application.hpp"

#include <string>

#include <anvil/log_sink_file_threaded.hpp>
#include <anvil/path_text.hpp>
#include <anvil/standard_paths.hpp>

#include <mox_version.hpp>

namespace mox {

namespace {

/// Folder of the log file.
std::string log_folder() {
    return anvil::text_of_path(
        anvil::standard_paths::writable_location(anvil::standard_paths::application_state));
}

} // namespace

application::application() : application_core(0, nullptr) {
    set_organization_name("Tarvex");
    set_organization_domain("com.tarvex");
    set_application_name("Orvane");
    set_application_version(mox_version);
    const auto folder = log_folder();
    if (!folder.empty()) // a user without a home has no log file
        anvil::install_default_log_sink(
            std::make_shared<anvil::log_sink_file_threaded>(folder + "/trace.log", true));
    anvil::set_default_log_level(0);
    anvil::install_logger_registry(&loggers_);
}

application::~application() { anvil::install_logger_registry(nullptr); }

application& the_application() {
    static application instance;
    return instance;
}

std::shared_ptr<anvil::log_stream> module_logger() {
    static const auto logger = [] {
        auto created = anvil::make_default_logger("tidepool");
        anvil::register_logger(created, true);
        return created;
    }();
    return logger;
}

void log(anvil::log_level level, std::string_view text) {
    const auto logger = module_logger();
    anvil::log_line(*logger, level, text);
}

} // namespace mox
