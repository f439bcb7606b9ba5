#include "platform/strata/src/elements/spread_row.hpp"

#include <array>
#include <utility>

#include "platform/strata/src/elements/channel_rows.hpp"
#include "platform/strata/src/elements/element_access.hpp"
#include "platform/strata/src/elements/number_types.hpp"

namespace strata::detail {

namespace {

template <typename Stored>
void spread_elements(const channel_buffer& row, std::uint64_t first, std::uint64_t count,
                     double* to, std::ptrdiff_t stride) noexcept {
    const auto* from = row.data() + first * element_size(row.stored());
    if (!is_scaled(row)) {
        for (std::size_t i = 0; i < count; ++i, to += stride)
            *to = static_cast<double>(load<Stored>(from, i));
        return;
    }
    const auto offset = row.offset();
    const auto factor = row.factor();
    for (std::size_t i = 0; i < count; ++i, to += stride) {
        *to = (static_cast<double>(load<Stored>(from, i)) - offset) * factor;
    }
}

template <std::size_t... Index> constexpr auto all_kinds(std::index_sequence<Index...>) {
    return std::array{&spread_elements<std::tuple_element_t<Index, number_types>>...};
}

constexpr auto spread_kind = all_kinds(std::make_index_sequence<number_kinds>{});

} // namespace

void spread_row(const channel_buffer& row, std::uint64_t first, std::uint64_t count, double* to,
                std::ptrdiff_t stride) noexcept {
    spread_kind[number_index(row.stored())](row, first, count, to, stride);
}

} // namespace strata::detail
