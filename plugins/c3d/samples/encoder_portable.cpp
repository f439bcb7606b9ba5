#include "plugins/c3d/samples/encoder.hpp"

#include "plugins/c3d/samples/encode_kernels.hpp"
#include "plugins/c3d/samples/lanes_portable.hpp"

namespace c3d {

encoder encoder_for_processor() noexcept { return encoder_of<portable_lanes>(); }

} // namespace c3d
