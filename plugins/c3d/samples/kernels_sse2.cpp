#include "plugins/c3d/samples/decoder.hpp"

#include "plugins/c3d/samples/encode_kernels.hpp"
#include "plugins/c3d/samples/encoder.hpp"
#include "plugins/c3d/samples/lanes_sse2.hpp"

namespace c3d {

decoder decoder_for(number_format format, sample_storage storage, word_sign sign) noexcept {
    return decoder_of<sse2_lanes>(format, storage, sign);
}

encoder encoder_for(number_format format, sample_storage storage) noexcept {
    return encoder_of<sse2_lanes>(format, storage);
}

} // namespace c3d
