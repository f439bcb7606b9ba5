#include "platform/anvil/src/user_folders.hpp"

#include <windows.h>

#include <knownfolders.h>
#include <objbase.h>
#include <shlobj.h>

namespace anvil {

std::filesystem::path environment_folder(const std::string& name) {
    const std::wstring wide_name(name.begin(), name.end());
    const DWORD length = GetEnvironmentVariableW(wide_name.c_str(), nullptr, 0);
    if (length == 0)
        return {};
    std::wstring value(length, L'\0');
    const DWORD written = GetEnvironmentVariableW(wide_name.c_str(), value.data(), length);
    // Changed between the two calls: counts as unset.
    if (written >= length)
        return {};
    value.resize(written);
    return value;
}

std::filesystem::path user_state_folder() {
    if (auto state = environment_folder("LOCALAPPDATA"); state.is_absolute())
        return state;
    PWSTR known = nullptr;
    std::filesystem::path folder;
    if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, KF_FLAG_DEFAULT, nullptr, &known)))
        folder = known;
    CoTaskMemFree(known);
    return folder;
}

} // namespace anvil
