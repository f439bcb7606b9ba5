#include "platform/anvil/src/user_folders.hpp"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace anvil {

namespace {

/// The home folder in the table of users, for processes that are started without an environment.
std::filesystem::path listed_home() {
    std::array<char, 16384> texts{};
    ::passwd entry{};
    ::passwd* found = nullptr;
    const int error = ::getpwuid_r(::geteuid(), &entry, texts.data(), texts.size(), &found);
    if (error != 0 || found == nullptr || found->pw_dir == nullptr)
        return {};
    return found->pw_dir;
}

} // namespace

std::filesystem::path environment_folder(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? std::filesystem::path{value} : std::filesystem::path{};
}

std::filesystem::path user_state_folder() {
    // The rule of the XDG folders: a value that is no absolute path counts as none.
    if (auto state = environment_folder("XDG_STATE_HOME"); state.is_absolute())
        return state;
    auto home = environment_folder("HOME");
    if (!home.is_absolute())
        home = listed_home();
    if (!home.is_absolute())
        return {};
    return home / ".local" / "state";
}

} // namespace anvil
