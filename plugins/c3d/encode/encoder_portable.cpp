#include "plugins/c3d/encode/encoder.hpp"

#include "plugins/c3d/decode/lanes_portable.hpp"
#include "plugins/c3d/encode/encode_kernels.hpp"

namespace c3d {

encoder encoder_for_processor() noexcept { return encoder_of<portable_lanes>(); }

} // namespace c3d
