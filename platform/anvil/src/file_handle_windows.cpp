#include "platform/anvil/src/file_handle.hpp"

#include <windows.h>

namespace anvil {

void file_handle::close() noexcept {
    if (is_open())
        CloseHandle(reinterpret_cast<HANDLE>(std::exchange(value_, none)));
}

} // namespace anvil
