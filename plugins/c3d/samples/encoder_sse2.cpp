#include "plugins/c3d/samples/encoder.hpp"

#include "plugins/c3d/samples/encode_kernels.hpp"
#include "plugins/c3d/samples/lanes_sse2.hpp"

namespace c3d {

encoder encoder_for_processor() noexcept { return encoder_of<sse2_lanes>(); }

} // namespace c3d
