#include "platform/strata/src/elements/decode_row.hpp"

#include <algorithm>
#include <array>

#include "platform/strata/src/elements/channel_rows.hpp"
#include "platform/strata/src/elements/convert_elements.hpp"
#include "platform/strata/src/elements/element_access.hpp"

namespace strata::detail {

namespace {

template <typename Stored>
void scale_elements(const std::byte* from, std::byte* to, std::size_t count, double offset,
                    double factor) noexcept {
    for (std::size_t i = 0; i < count; ++i) {
        save(to, i, (static_cast<double>(load<Stored>(from, i)) - offset) * factor);
    }
}

void scale_to_doubles(const channel_buffer& row, const std::byte* from, std::byte* to,
                      std::size_t count) noexcept {
    switch (row.stored()) {
    case data_type::int16:
        return scale_elements<std::int16_t>(from, to, count, row.offset(), row.factor());
    case data_type::float32:
        return scale_elements<float>(from, to, count, row.offset(), row.factor());
    default:
        find_converter(row.stored(), data_type::float64)(from, to, count);
        return scale_elements<double>(to, to, count, row.offset(), row.factor());
    }
}

/// Scaled elements as another type than double, through doubles that stay in the cache.
void scale_and_convert(const channel_buffer& row, const std::byte* from, std::byte* to,
                       std::size_t count, data_type requested) noexcept {
    constexpr std::size_t block = 256;
    std::array<std::byte, block * sizeof(double)> doubles;
    const auto convert = find_converter(data_type::float64, requested);
    while (count > 0) {
        const auto taken = std::min(count, block);
        scale_to_doubles(row, from, doubles.data(), taken);
        convert(doubles.data(), to, taken);
        from += taken * element_size(row.stored());
        to += taken * element_size(requested);
        count -= taken;
    }
}

} // namespace

void decode_row(const channel_buffer& row, std::uint64_t first, std::uint64_t count, std::byte* to,
                data_type requested) noexcept {
    const auto* from = row.data() + first * element_size(row.stored());
    if (!is_scaled(row))
        return find_converter(row.stored(), requested)(from, to, count);
    if (element_kind(requested) == data_type::float64)
        return scale_to_doubles(row, from, to, count);
    scale_and_convert(row, from, to, count, requested);
}

} // namespace strata::detail
