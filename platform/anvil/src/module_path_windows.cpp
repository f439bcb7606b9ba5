#include <anvil/module_path.hpp>

#include <string>

#include <windows.h>

namespace anvil {

std::filesystem::path path_of_code(const void* address) {
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<LPCWSTR>(address), &module))
        return {};

    constexpr std::size_t longest_path = 32768; // the system's own limit, in characters
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0)
            return {};
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        if (path.size() >= longest_path)
            return {};
        path.resize(path.size() * 2);
    }
}

} // namespace anvil
