#include "plugins/c3d/samples/sample_source.hpp"

#include <cmath>
#include <cstdint>
#include <limits>

#include "plugins/c3d/samples/buffer_elements.hpp"

namespace c3d {

namespace {

using strata::data_type;

template <typename Compute>
void compute(const strata::channel_buffer& buffer, std::uint64_t first, std::size_t count,
             float* to, Compute value) noexcept {
    with_elements(buffer, [&](const auto* elements) {
        const auto* from = elements + first;
        for (std::size_t i = 0; i < count; ++i)
            to[i] = static_cast<float>(value(static_cast<double>(from[i])));
    });
}

} // namespace

sample_source::sample_source(const strata::channel_buffer& buffer, std::uint64_t first)
    : buffer_(buffer), first_(first), raw_(buffer.offset() == 0.0 && buffer.factor() == 1.0) {}

sample_source::sample_source(const strata::channel_buffer& buffer, double divisor, double shift)
    : buffer_(buffer), divisor_(divisor), shift_(shift),
      raw_(buffer.offset() == shift && buffer.factor() == divisor) {}

sample_source sample_source::divided(double divisor) const {
    sample_source result(buffer_, divisor, 0.0);
    result.first_ = first_;
    return result;
}

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

std::optional<std::size_t>
sample_source::first_overflow(std::size_t index, std::span<const float> computed) const noexcept {
    bool any = false; // without a way out of the loop, so that it takes several at once
    for (auto single : computed)
        any |= std::abs(single) == std::numeric_limits<float>::infinity();
    std::optional<std::size_t> found;
    if (!any)
        return found;
    with_elements(buffer_, [&](const auto* elements) {
        for (std::size_t i = 0; i < computed.size() && !found; ++i) {
            if (std::isinf(computed[i]) &&
                std::isfinite(static_cast<double>(elements[first_ + index + i])))
                found = i;
        }
    });
    return found;
}

} // namespace c3d
