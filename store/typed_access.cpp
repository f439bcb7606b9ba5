#include "store/typed_access.hpp"

#include <type_traits>
#include <utility>

#include <strata/access/read_texts.hpp>

namespace mox {

namespace {

/// Reads the elements of an attribute or a selection of `shape`; false, with `values` unchanged,
/// when the store cannot.
template <typename Native, typename Source>
bool read_elements(const Source& source, const strata::data_shape& shape,
                   std::vector<Native>& values) {
    if constexpr (std::is_same_v<Native, std::string>) {
        auto texts = strata::read_texts(source);
        if (!texts)
            return false;
        values = *std::move(texts);
        return true;
    } else {
        std::vector<Native> elements(shape.element_count());
        if (!source.read_value(elements.data(), strata::data_type_of<Native>))
            return false;
        values = std::move(elements);
        return true;
    }
}

template <typename Native, typename Target>
bool write_elements(Target& target, const std::vector<Native>& values) {
    if constexpr (std::is_same_v<Native, std::string>) {
        std::vector<const char*> pointers;
        pointers.reserve(values.size());
        for (const auto& text : values)
            pointers.push_back(text.c_str());
        return target.write_value(pointers.data(), strata::data_type::string);
    } else {
        return target.write_value(values.data(), strata::data_type_of<Native>);
    }
}

} // namespace

template <typename Native>
std::vector<Native> read_vector(const strata::data_attribute& attribute) {
    std::vector<Native> values;
    if (!attribute)
        return values;
    const auto shape = attribute.shape();
    if (shape.element_count() == 0)
        return values;
    if (!read_elements(attribute, shape, values)) {
        log_store_failure(store_failure::read_attribute);
        values.resize(shape.element_count());
    }
    return values;
}

template <>
std::string read<std::string>(const strata::data_attribute& attribute, std::string fallback) {
    if (!attribute)
        return fallback;
    if (attribute.shape().element_count() == 1) {
        if (auto text = strata::read_text(attribute))
            return *std::move(text);
        log_store_failure(store_failure::read_attribute);
        return fallback;
    }
    auto texts = read_vector<std::string>(attribute);
    return texts.empty() ? fallback : texts.front();
}

template <typename Native>
bool read_vector(const strata::data_selection& selection, std::vector<Native>& values) {
    if (!selection) {
        log_store_failure(store_failure::read_selection);
        return false;
    }
    const auto shape = selection.shape();
    if (shape.element_count() == 0) {
        values.clear();
        return true;
    }
    if (read_elements(selection, shape, values))
        return true;
    log_store_failure(store_failure::read_set);
    return false;
}

template <typename Native> bool read(const strata::data_selection& selection, Native& value) {
    if (!selection) {
        log_store_failure(store_failure::read_selection);
        return false;
    }
    const auto shape = selection.shape();
    if (shape.element_count() == 1) {
        if constexpr (std::is_same_v<Native, std::string>) {
            if (auto texts = strata::read_texts(selection)) {
                value = std::move(texts->front());
                return true;
            }
        } else {
            if (selection.read_value(&value, strata::data_type_of<Native>))
                return true;
        }
    }
    log_store_failure(store_failure::read_set);
    return false;
}

template <typename Native>
void write_vector(strata::data_attribute attribute, const std::vector<Native>& values) {
    if (!attribute || attribute.shape().element_count() != values.size()) {
        log_store_failure(store_failure::attribute_count);
    } else if (!values.empty() && !write_elements(attribute, values)) {
        log_store_failure(store_failure::write_attribute);
    }
}

template <typename Native>
void write_vector(strata::data_selection selection, const std::vector<Native>& values) {
    if (!selection) {
        log_store_failure(store_failure::write_selection);
    } else if (selection.shape().element_count() != values.size()) {
        log_store_failure(store_failure::selection_count);
    } else if (!values.empty() && !write_elements(selection, values)) {
        log_store_failure(store_failure::write_set);
    }
}

template std::vector<std::int8_t> read_vector(const strata::data_attribute&);
template std::vector<std::int16_t> read_vector(const strata::data_attribute&);
template std::vector<std::int32_t> read_vector(const strata::data_attribute&);
template std::vector<std::int64_t> read_vector(const strata::data_attribute&);
template std::vector<std::uint64_t> read_vector(const strata::data_attribute&);
template std::vector<float> read_vector(const strata::data_attribute&);
template std::vector<double> read_vector(const strata::data_attribute&);
template std::vector<std::string> read_vector(const strata::data_attribute&);

template bool read_vector(const strata::data_selection&, std::vector<std::int32_t>&);
template bool read_vector(const strata::data_selection&, std::vector<float>&);
template bool read_vector(const strata::data_selection&, std::vector<double>&);
template bool read_vector(const strata::data_selection&, std::vector<std::string>&);

template bool read(const strata::data_selection&, std::int32_t&);
template bool read(const strata::data_selection&, std::int64_t&);
template bool read(const strata::data_selection&, float&);
template bool read(const strata::data_selection&, double&);
template bool read(const strata::data_selection&, bool&);
template bool read(const strata::data_selection&, std::string&);

template void write_vector(strata::data_attribute, const std::vector<std::int8_t>&);
template void write_vector(strata::data_attribute, const std::vector<std::int16_t>&);
template void write_vector(strata::data_attribute, const std::vector<std::int32_t>&);
template void write_vector(strata::data_attribute, const std::vector<std::int64_t>&);
template void write_vector(strata::data_attribute, const std::vector<std::uint64_t>&);
template void write_vector(strata::data_attribute, const std::vector<float>&);
template void write_vector(strata::data_attribute, const std::vector<double>&);
template void write_vector(strata::data_attribute, const std::vector<std::string>&);

template void write_vector(strata::data_selection, const std::vector<float>&);
template void write_vector(strata::data_selection, const std::vector<double>&);

} // namespace mox
