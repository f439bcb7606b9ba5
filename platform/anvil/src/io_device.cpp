#include <anvil/io_device.hpp>

namespace anvil {

io_device::~io_device() = default;

} // namespace anvil
