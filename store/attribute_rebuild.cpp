#include "store/attribute_rebuild.hpp"

#include "store/element_conversion.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

/// Calls `action` with a value of the native type of `type`, one of the four that metadata are held
/// in.
template <typename Action> void for_metadata_type(strata::data_type type, Action&& action) {
    switch (strata::element_kind(type)) {
    case strata::data_type::int8:
        return action(std::int8_t{});
    case strata::data_type::int16:
        return action(std::int16_t{});
    case strata::data_type::float32:
        return action(float{});
    case strata::data_type::string:
        return action(std::string{});
    default:
        throw_runtime_error("Unsupported type");
    }
}

template <typename Native>
void replace(strata::data_group group, const std::string& name, const strata::data_shape& shape,
             const std::vector<Native>& values) {
    group.delete_attribute(name);
    auto created = group.create_attribute(name, shape, strata::data_type_of<Native>);
    if (created)
        write_vector(created, values);
}

} // namespace

void change_extent(strata::data_group group, const std::string& name,
                   const std::vector<std::int64_t>& dimensions) {
    const auto attribute = group.retrieve_attribute(name);
    const auto count = strata::data_shape(dimensions, false).element_count();
    for_metadata_type(attribute.type(), [&]<typename Native>(const Native&) {
        auto values = read_vector<Native>(attribute);
        values.resize(count);
        // Kept: one dimension is left, whatever was asked for.
        replace(group, name, strata::data_shape({static_cast<std::int64_t>(count)}, false), values);
    });
}

void change_element_type(strata::data_group group, const std::string& name,
                         strata::data_type target) {
    const auto attribute = group.retrieve_attribute(name);
    for_metadata_type(attribute.type(), [&]<typename From>(const From&) {
        for_metadata_type(target, [&]<typename To>(const To&) {
            std::vector<To> converted;
            const auto values = read_vector<From>(attribute);
            converted.reserve(values.size());
            for (const auto& value : values)
                converted.push_back(convert_element<To>(value));
            replace(group, name, attribute.shape(), converted);
        });
    });
}

} // namespace mox
