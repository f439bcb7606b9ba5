#include "plugins/c3d/export/sample_source.hpp"

#include <cstdint>

namespace c3d {

namespace {

using strata::data_type;

template <typename Element, typename Compute>
void compute(const strata::channel_buffer& buffer, std::uint64_t first, std::size_t count,
             float* to, Compute value) noexcept {
    const auto* from = reinterpret_cast<const Element*>(buffer.data()) + first;
    for (std::size_t i = 0; i < count; ++i)
        to[i] = static_cast<float>(value(static_cast<double>(from[i])));
}

/// Calls compute for the type of the elements: those that channels are held in.
template <typename Compute>
void compute(const strata::channel_buffer& buffer, std::uint64_t first, std::size_t count,
             float* to, Compute value) noexcept {
    switch (strata::element_kind(buffer.stored())) {
    case data_type::float64:
        return compute<double>(buffer, first, count, to, value);
    case data_type::float32:
        return compute<float>(buffer, first, count, to, value);
    case data_type::int16:
        return compute<std::int16_t>(buffer, first, count, to, value);
    default:
        return compute<std::int8_t>(buffer, first, 0, to, value);
    }
}

} // namespace

sample_source::sample_source(const strata::channel_buffer& buffer, std::uint64_t first)
    : buffer_(buffer), first_(first), raw_(buffer.offset() == 0.0 && buffer.factor() == 1.0) {}

sample_source::sample_source(const strata::channel_buffer& buffer, double divisor, double shift)
    : buffer_(buffer), divisor_(divisor), shift_(shift),
      raw_(buffer.offset() == shift && buffer.factor() == divisor) {}

const float* sample_source::singles(std::size_t index, std::size_t count,
                                    float* scratch) const noexcept {
    const auto first = first_ + index;
    if (raw_) {
        if (buffer_.stored() == data_type::float32)
            return reinterpret_cast<const float*>(buffer_.data()) + first;
        compute(buffer_, first, count, scratch, [](double element) { return element; });
        return scratch;
    }
    const auto offset = buffer_.offset();
    const auto factor = buffer_.factor();
    if (divisor_ == 1.0 && shift_ == 0.0) {
        compute(buffer_, first, count, scratch,
                [=](double element) { return (element - offset) * factor; });
    } else {
        const auto divisor = divisor_;
        const auto shift = shift_;
        compute(buffer_, first, count, scratch,
                [=](double element) { return (element - offset) * factor / divisor + shift; });
    }
    return scratch;
}

} // namespace c3d
