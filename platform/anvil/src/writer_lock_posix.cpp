#include "platform/anvil/src/writer_lock_posix.hpp"

#include <cerrno>
#include <sys/file.h>

#include "platform/anvil/src/regular_file_posix.hpp"

namespace anvil {

writer_lock lock_as_writer(const file_handle& file) noexcept {
    if (::flock(descriptor_of(file), LOCK_EX | LOCK_NB) == 0)
        return writer_lock::held;
    return errno == EWOULDBLOCK ? writer_lock::held_by_another : writer_lock::unknown;
}

} // namespace anvil
