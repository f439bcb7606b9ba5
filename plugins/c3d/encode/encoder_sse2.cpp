#include "plugins/c3d/encode/encoder.hpp"

#include "plugins/c3d/decode/lanes_sse2.hpp"
#include "plugins/c3d/encode/encode_kernels.hpp"

namespace c3d {

encoder encoder_for_processor() noexcept { return encoder_of<sse2_lanes>(); }

} // namespace c3d
