#include <anvil/standard_paths.hpp>

#include <string>
#include <string_view>

#include <anvil/application_core.hpp>
#include <anvil/path_text.hpp>

#include "platform/anvil/src/user_folders.hpp"

namespace anvil {

namespace {

/// `MY_PROGRAM_STATE_DIR` for "My program".
std::string state_variable(std::string_view application_name) {
    std::string variable;
    for (const char c : application_name) {
        const bool lower = c >= 'a' && c <= 'z';
        const bool kept = (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        variable += lower ? static_cast<char>(c - 'a' + 'A') : kept ? c : '_';
    }
    return variable + "_STATE_DIR";
}

std::filesystem::path application_state_folder() {
    const application_core* application = application_core::instance();
    if (application == nullptr)
        return user_state_folder();

    if (!application->application_name().empty()) {
        auto chosen = environment_folder(state_variable(application->application_name()));
        if (!chosen.empty())
            return chosen;
    }
    auto folder = user_state_folder();
    if (folder.empty())
        return folder;
    for (const auto* name : {&application->organization_name(), &application->application_name()})
        if (!name->empty())
            folder /= path_from_text(*name);
    return folder;
}

} // namespace

std::filesystem::path standard_paths::writable_location(int location_code) {
    if (location_code == application_state)
        return application_state_folder();
    return {};
}

} // namespace anvil
