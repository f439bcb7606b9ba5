#include "plugins/data_modifier/attribute_column.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace data_modifier {

namespace attribute = schema::attribute;

namespace {

using strata::data_type;

/// What every channel set has under this name.
struct known_attribute {
    std::string_view name;
    data_type type;
    std::string_view initial_text;
    double initial_number;
};

constexpr std::array known_attributes{
    known_attribute{attribute::description, data_type::string, "", 0.0},
    known_attribute{attribute::label, data_type::string, "", 0.0},
    known_attribute{attribute::unit, data_type::string, schema::unknown_unit, 0.0},
    known_attribute{attribute::gain, data_type::int32, "", 0.0},
    known_attribute{attribute::offset, data_type::float32, "", 0.0},
    known_attribute{attribute::scale, data_type::float32, "", 1.0},
    known_attribute{attribute::metric_type, data_type::string, "", 0.0},
};

} // namespace

attribute_column::attribute_column(std::string name, const strata::data_attribute& values)
    : name_(std::move(name)), type_(element_kind(values.type())) {
    const auto known = std::ranges::find(known_attributes, name_, &known_attribute::name);
    if (known != known_attributes.end()) {
        type_ = known->type;
        initial_text_ = known->initial_text;
        initial_number_ = known->initial_number;
    }
    if (values && values.shape().dimensions().size() <= 1)
        read(values);
}

void attribute_column::read(const strata::data_attribute& values) {
    if (type_ == data_type::string) {
        texts_ = schema::read_texts(values);
        return;
    }
    numbers_.resize(values.shape().element_count() * element_size(type_));
    if (!numbers_.empty() && !values.read_value(numbers_.data(), type_)) {
        schema::log_unreadable_attribute();
        numbers_.clear();
    }
}

void attribute_column::create_on(strata::data_set& set, std::uint64_t channel) const {
    const auto size = element_size(type_);
    if (size == 0 && type_ != data_type::string)
        return;
    auto attribute = set.create_attribute(name_, strata::data_shape{}, type_);
    if (type_ == data_type::string) {
        attribute.write((channel < texts_.size() ? texts_[channel] : initial_text_).c_str());
        return;
    }
    const bool given = (channel + 1) * size <= numbers_.size();
    static_cast<void>(given ? attribute.write_value(numbers_.data() + channel * size, type_)
                            : attribute.write_value(&initial_number_, data_type::float64));
}

} // namespace data_modifier
