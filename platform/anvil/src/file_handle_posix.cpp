#include "platform/anvil/src/file_handle.hpp"

#include <unistd.h>

namespace anvil {

void file_handle::close() noexcept {
    // Never repeated: also after EINTR the descriptor is gone, and its number may already be
    // another file's.
    if (is_open())
        ::close(static_cast<int>(std::exchange(value_, none)));
}

} // namespace anvil
