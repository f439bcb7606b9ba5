#include <strata/access/strided_read.hpp>

#include "platform/strata/src/elements/spread_row.hpp"
#include "platform/strata/src/handles/channel_place.hpp"

namespace strata {

bool read_strided(const data_set& set, std::uint64_t channel, std::uint64_t component,
                  std::uint64_t first_sample, std::uint64_t samples, double* destination,
                  std::ptrdiff_t stride_elements) noexcept {
    const auto place = detail::find_channel(set, channel);
    if (!place.row || component >= place.components)
        return false;
    if (first_sample > place.samples || samples > place.samples - first_sample)
        return false;
    detail::spread_row(*place.row, place.first + component * place.step + first_sample, samples,
                       destination, stride_elements);
    return true;
}

} // namespace strata
