#include "plugins/c3d/parameters/stored_attribute.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/parameters/parameter_values.hpp"
#include "schema/file_text.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace {

using strata::data_type;

template <typename Number> bool all_fit(const std::vector<std::int64_t>& values) {
    return std::all_of(values.begin(), values.end(), [](auto value) {
        return value >= std::numeric_limits<Number>::min() &&
               value <= std::numeric_limits<Number>::max();
    });
}

written_parameter stored_texts(const strata::data_attribute& attribute, parameter_place place,
                               const std::vector<std::int64_t>& extents,
                               const kept_parameter& record) {
    auto texts = schema::read_texts(attribute);
    texts.resize(static_cast<std::size_t>(attribute.shape().element_count()));
    const bool was_text = record.type == static_cast<int>(element_type::character);
    const bool single = extents.empty();
    written_parameter item;
    if (was_text && record.width < 0 && single) {
        const auto character = schema::as_stored_within(texts.front(), 1);
        if (character.size() <= 1) {
            item.type = element_type::character;
            append_text(item.data, character.empty() ? " " : character);
            return item;
        }
    }
    const bool has_width = was_text && record.width >= 0;
    const auto width =
        has_width ? text_width{static_cast<std::size_t>(record.width), record.was_windows_1252}
                  : text_width{};
    set_texts(item, place, texts, extents, width);
    return item;
}

written_parameter stored_integers(const strata::data_attribute& attribute,
                                  const std::vector<std::int64_t>& shape, parameter_place place,
                                  const kept_parameter& record) {
    const auto values = schema::read_numbers<std::int64_t>(attribute);
    auto extents = stored_extents(place, shape);
    const auto kind = strata::element_kind(attribute.type());
    const bool one_byte =
        kind == data_type::int8 || kind == data_type::boolean || kind == data_type::uint8;
    const bool was_byte = record.type == static_cast<int>(element_type::byte);
    const bool is_count = values.size() == 1 && values.front() >= 0 && values.front() <= 255;
    written_parameter item;
    if ((one_byte && all_fit<std::int8_t>(values)) || (one_byte && is_count) ||
        (was_byte && is_count)) {
        set_bytes(item, values, std::move(extents));
    } else if (all_fit<std::int16_t>(values)) {
        set_words(item, values, std::move(extents));
    } else {
        set_reals(item, schema::read_numbers<float>(attribute), std::move(extents));
    }
    return item;
}

} // namespace

written_parameter stored_attribute(const strata::data_attribute& attribute, std::string_view group,
                                   const kept_parameter& record) {
    const parameter_place place{group, record.name};
    auto extents = attribute.shape().dimensions();
    std::reverse(extents.begin(), extents.end());
    switch (strata::element_kind(attribute.type())) {
    case data_type::string:
        return stored_texts(attribute, place, extents, record);
    case data_type::float32:
    case data_type::float64: {
        written_parameter item;
        set_reals(item, schema::read_numbers<float>(attribute), stored_extents(place, extents));
        return item;
    }
    case data_type::invalid:
        throw export_error("the parameter {}:{} has no type", group, record.name);
    default:
        return stored_integers(attribute, extents, place, record);
    }
}

} // namespace c3d
