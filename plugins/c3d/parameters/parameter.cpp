#include "plugins/c3d/parameters/parameter.hpp"

#include <algorithm>
#include <cmath>

#include "schema/file_text.hpp"

namespace c3d {

std::optional<element_type> element_type_of(std::int8_t code) noexcept {
    switch (code) {
    case -1:
        return element_type::character;
    case 1:
        return element_type::byte;
    case 2:
        return element_type::integer;
    case 4:
        return element_type::real;
    default:
        return std::nullopt;
    }
}

std::size_t bytes_of(element_type type) noexcept {
    switch (type) {
    case element_type::character:
    case element_type::byte:
        return 1;
    case element_type::integer:
        return 2;
    case element_type::real:
        break;
    }
    return 4;
}

parameter_dimensions::parameter_dimensions(std::span<const std::byte> bytes) noexcept
    : count_(static_cast<std::uint8_t>(std::min(bytes.size(), most))) {
    for (std::size_t i = 0; i < count_; ++i)
        extents_[i] = std::to_integer<std::uint8_t>(bytes[i]);
}

std::uint64_t parameter_dimensions::product(std::size_t first) const noexcept {
    std::uint64_t result = 1;
    for (std::size_t i = first; i < count_; ++i)
        result *= extents_[i];
    return result;
}

std::size_t parameter::text_width() const noexcept {
    return dimensions.count() == 0 ? data.size() : dimensions[0];
}

std::string_view parameter::text(std::uint64_t index) const noexcept {
    const auto width = text_width();
    const auto* characters = reinterpret_cast<const char*>(data.data());
    return schema::without_padding({characters + static_cast<std::size_t>(index) * width, width});
}

std::optional<double> parameter::number(std::uint64_t index) const noexcept {
    if (type == element_type::character || index >= element_count())
        return std::nullopt;
    const auto* at = data.data() + static_cast<std::size_t>(index) * bytes_of(type);
    switch (type) {
    case element_type::integer:
        return read_signed_word(format, at);
    case element_type::real:
        return read_real(format, at);
    default:
        return std::to_integer<std::uint8_t>(*at);
    }
}

std::optional<std::uint64_t> parameter::count(std::uint64_t index) const noexcept {
    if (type == element_type::integer && index < element_count()) {
        return read_unsigned_word(format, data.data() + static_cast<std::size_t>(index) * 2);
    }
    const auto value = number(index);
    // 2^53: beyond it reals are not exact counts of anything.
    if (!value || !(*value >= 0.0 && *value <= 9007199254740992.0))
        return std::nullopt;
    return static_cast<std::uint64_t>(std::llround(*value));
}

std::optional<std::size_t> fit(parameter_dimensions& dimensions, element_type type,
                               std::uint64_t available) noexcept {
    const auto announced = dimensions.product() * bytes_of(type);
    if (announced <= available)
        return static_cast<std::size_t>(announced);
    const auto extents = dimensions.count();
    if (extents == 0)
        return std::nullopt;
    const auto entry_bytes = announced / dimensions[extents - 1];
    const auto entries = available / entry_bytes;
    dimensions.shorten_last(static_cast<std::uint8_t>(entries));
    return static_cast<std::size_t>(entries * entry_bytes);
}

} // namespace c3d
