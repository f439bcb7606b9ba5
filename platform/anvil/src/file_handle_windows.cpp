#include "platform/anvil/src/file_handle_windows.hpp"

namespace anvil {

void file_handle::close() noexcept {
    if (is_open())
        CloseHandle(reinterpret_cast<HANDLE>(std::exchange(value_, none)));
}

std::error_code last_error() noexcept {
    const std::error_code own{static_cast<int>(GetLastError()), std::system_category()};
    const auto reason = own.default_error_condition();
    if (reason.category() == std::generic_category())
        return {reason.value(), std::generic_category()};
    return own;
}

} // namespace anvil
