#include <strata/access/strided_read.hpp>

#include <array>
#include <utility>

#include "platform/strata/src/elements/channel_rows.hpp"
#include "platform/strata/src/elements/convert_number.hpp"
#include "platform/strata/src/elements/number_types.hpp"
#include "platform/strata/src/handles/access.hpp"

namespace strata {

namespace {

using namespace detail;

/// One channel's part of a set: its row, and where in it the first component starts.
struct channel_place {
    const channel_buffer* row = nullptr; ///< null when the set has no such channel or samples
    std::uint64_t first = 0;             ///< element of the first component's first sample asked for
    std::uint64_t components = 0;        ///< components that the set has
    std::uint64_t step = 0;              ///< elements from one component to the next
};

channel_place find_channel(const data_set& set, std::uint64_t channel, std::uint64_t first_sample,
                           std::uint64_t samples) noexcept {
    const auto* entry = access::entry(set);
    if (!entry || !is_number(entry->content()->type())) return {};
    const auto& array = entry->content()->elements();
    const auto& extents = array.extents();
    const auto& layout = array.layout();

    const auto rank = extents.rank();
    if (rank != 1 && rank != 3) return {};
    const auto held = extents[rank - 1];
    if (channel >= (rank == 1 ? 1 : extents[1]) || first_sample > held || samples > held - first_sample) return {};
    if (rank == 1) return {array.rows().data(), first_sample, 1, 0};
    if (layout.has_axis()) return {&array.rows()[channel], first_sample, extents[0], layout.stride(0)};
    return {array.rows().data(), channel * layout.stride(1) + first_sample, extents[0], layout.stride(0)};
}

struct linear_scale {
    double offset;
    double factor;
    double operator()(double element) const noexcept { return (element - offset) * factor; }
};

struct no_scale {
    double operator()(double element) const noexcept { return element; }
};

template <typename Stored, typename Scale>
void spread(const std::byte* from, std::size_t count, double* to, std::ptrdiff_t stride, Scale scale) noexcept {
    for (std::size_t i = 0; i < count; ++i, to += stride) *to = scale(static_cast<double>(load<Stored>(from, i)));
}

/// Three components, the usual number for points, side by side: one pass fills the cache lines it touches.
template <typename Stored, typename Scale>
void spread_three(const std::byte* from, std::size_t step, std::size_t count, double* to, std::ptrdiff_t stride,
                  Scale scale) noexcept {
    for (std::size_t i = 0; i < count; ++i, to += stride) {
        to[0] = scale(static_cast<double>(load<Stored>(from, i)));
        to[1] = scale(static_cast<double>(load<Stored>(from, step + i)));
        to[2] = scale(static_cast<double>(load<Stored>(from, 2 * step + i)));
    }
}

template <typename Stored> struct spreading {
    static void one(const channel_buffer& row, std::uint64_t first, std::uint64_t count, double* to,
                    std::ptrdiff_t stride) noexcept {
        const auto* from = row.data() + first * sizeof(Stored);
        if (is_scaled(row)) return spread<Stored>(from, count, to, stride, linear_scale{row.offset(), row.factor()});
        spread<Stored>(from, count, to, stride, no_scale{});
    }
    static void three(const channel_buffer& row, std::uint64_t first, std::uint64_t step, std::uint64_t count, double* to,
                      std::ptrdiff_t stride) noexcept {
        const auto* from = row.data() + first * sizeof(Stored);
        if (is_scaled(row)) {
            return spread_three<Stored>(from, step, count, to, stride, linear_scale{row.offset(), row.factor()});
        }
        spread_three<Stored>(from, step, count, to, stride, no_scale{});
    }
};

template <std::size_t... Index> constexpr auto all_single(std::index_sequence<Index...>) {
    return std::array{&spreading<std::tuple_element_t<Index, number_types>>::one...};
}
template <std::size_t... Index> constexpr auto all_triple(std::index_sequence<Index...>) {
    return std::array{&spreading<std::tuple_element_t<Index, number_types>>::three...};
}

constexpr auto spread_single = all_single(std::make_index_sequence<number_kinds>{});
constexpr auto spread_triple = all_triple(std::make_index_sequence<number_kinds>{});

} // namespace

bool read_strided(const data_set& set, std::uint64_t channel, std::uint64_t component, std::uint64_t first_sample,
                  std::uint64_t samples, double* destination, std::ptrdiff_t stride_elements) noexcept {
    const auto place = find_channel(set, channel, first_sample, samples);
    if (!place.row || component >= place.components) return false;
    spread_single[number_index(place.row->stored())](*place.row, place.first + component * place.step, samples,
                                                     destination, stride_elements);
    return true;
}

bool read_interleaved(const data_set& set, std::uint64_t channel, std::uint64_t first_sample, std::uint64_t samples,
                      double* destination, std::ptrdiff_t stride_elements) noexcept {
    const auto place = find_channel(set, channel, first_sample, samples);
    if (!place.row) return false;
    if (place.components == 3) {
        spread_triple[number_index(place.row->stored())](*place.row, place.first, place.step, samples, destination,
                                                         stride_elements);
        return true;
    }
    for (std::uint64_t component = 0; component < place.components; ++component) {
        spread_single[number_index(place.row->stored())](*place.row, place.first + component * place.step, samples,
                                                         destination + component, stride_elements);
    }
    return true;
}

} // namespace strata
