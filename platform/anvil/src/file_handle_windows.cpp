#include "platform/anvil/src/file_handle_windows.hpp"

namespace anvil {

void file_handle::close() noexcept {
    if (is_open())
        CloseHandle(reinterpret_cast<HANDLE>(std::exchange(value_, none)));
}

} // namespace anvil
