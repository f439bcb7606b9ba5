#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <strata/data_type.hpp>
#include <strata/plugin/channel_buffer.hpp>

namespace c3d {

/// The elements of a buffer that holds `float32`, to be filled or looked at in place.
[[nodiscard]] inline std::span<float> floats_of(const strata::channel_buffer& buffer) noexcept {
    return {reinterpret_cast<float*>(buffer.data()), static_cast<std::size_t>(buffer.count())};
}

/// Calls `use` with a pointer to the elements, in the type in which the channel is held.
template <typename Use> void with_elements(const strata::channel_buffer& buffer, Use use) {
    const auto elements = [&]<typename Element>() {
        use(reinterpret_cast<const Element*>(buffer.data()));
    };
    switch (strata::element_kind(buffer.stored())) {
    case strata::data_type::float64:
        return elements.template operator()<double>();
    case strata::data_type::float32:
        return elements.template operator()<float>();
    case strata::data_type::int16:
        return elements.template operator()<std::int16_t>();
    default:
        return; // channels are held in no other
    }
}

} // namespace c3d
