#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <strata/access/data_type_of.hpp>
#include <strata/data_attribute.hpp>
#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>

namespace schema {

/// Gives a new attribute its value: as many elements as its shape has. Throws store_error when the
/// store refuses it.
void set_value(strata::data_attribute attribute, const void* elements, strata::data_type type);

// All others create the attribute on a group or a set, which must not have it yet (store_error).

template <typename Owner, typename Number>
void write_number(Owner& owner, std::string_view name, Number value) {
    constexpr auto type = strata::data_type_of<Number>;
    set_value(owner.create_attribute(name, strata::data_shape(false), type), &value, type);
}

/// `values` has as many elements as the shape.
template <typename Owner, typename Number>
void write_numbers(Owner& owner, std::string_view name, const strata::data_shape& shape,
                   std::span<const Number> values) {
    constexpr auto type = strata::data_type_of<Number>;
    set_value(owner.create_attribute(name, shape, type), values.data(), type);
}

template <typename Owner, typename Number>
void write_numbers(Owner& owner, std::string_view name, const std::vector<Number>& values) {
    const strata::data_shape shape({static_cast<std::int64_t>(values.size())}, false);
    write_numbers(owner, name, shape, std::span<const Number>(values));
}

template <typename Owner>
void write_text(Owner& owner, std::string_view name, const std::string& text) {
    owner.create_attribute(name, strata::data_shape(false), strata::data_type::string)
        .write(text.c_str());
}

template <typename Owner>
void write_texts(Owner& owner, std::string_view name, const strata::data_shape& shape,
                 std::span<const std::string> texts) {
    std::vector<const char*> pointers;
    pointers.reserve(texts.size());
    for (const auto& text : texts)
        pointers.push_back(text.c_str());
    constexpr auto type = strata::data_type::string;
    set_value(owner.create_attribute(name, shape, type), static_cast<const void*>(pointers.data()),
              type);
}

template <typename Owner>
void write_texts(Owner& owner, std::string_view name, const std::vector<std::string>& texts) {
    const strata::data_shape shape({static_cast<std::int64_t>(texts.size())}, false);
    write_texts(owner, name, shape, std::span<const std::string>(texts));
}

} // namespace schema
