#include <anvil/io_device.hpp>

namespace anvil {

io_device::~io_device() = default;

std::error_code io_device::commit() noexcept { return {}; }

} // namespace anvil
