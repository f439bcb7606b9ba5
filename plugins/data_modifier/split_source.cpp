#include "plugins/data_modifier/split_source.hpp"

#include <utility>

#include <strata/data_converter.hpp>
#include <strata/data_type.hpp>

#include "plugins/data_modifier/split_error.hpp"
#include "schema/names.hpp"

namespace data_modifier {

namespace attribute = schema::attribute;

namespace {

using strata::data_type;

/// Texts that the store hands out, freed whatever happens to their copies.
class text_buffer {
  public:
    explicit text_buffer(strata::data_shape shape)
        : shape_(std::move(shape)), texts_(shape_.element_count(), nullptr) {}
    text_buffer(const text_buffer&) = delete;
    text_buffer& operator=(const text_buffer&) = delete;
    ~text_buffer() { strata::data_converter_string_clean_buffer(shape_, data()); }

    [[nodiscard]] void* data() noexcept { return static_cast<void*>(texts_.data()); }
    [[nodiscard]] const std::vector<const char*>& texts() const noexcept { return texts_; }

  private:
    strata::data_shape shape_;
    std::vector<const char*> texts_; // null until they are read
};

template <typename Number>
Number read_number(const strata::data_set& set, const char* name, data_type type,
                   Number otherwise) {
    const auto attribute = set.retrieve_attribute(name);
    if (attribute && attribute.shape().element_count() == 1) {
        Number value = otherwise;
        if (attribute.read_value(&value, type))
            return value;
    }
    return otherwise;
}

std::vector<std::string> find_row_attributes(const strata::data_set& set, std::uint64_t channels) {
    std::vector<std::string> names;
    for (auto& name : set.list_attributes_name()) {
        const auto attribute = set.retrieve_attribute(name);
        const auto shape = attribute.shape();
        const auto& extents = shape.dimensions();
        const bool has_rows =
            extents.size() == 2 && static_cast<std::uint64_t>(extents[0]) == channels;
        if (has_rows && strata::element_size(attribute.type()) != 0)
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace

split_source open_source(const strata::data_group& root, const std::string& path) {
    if (!root.exists_set(path))
        throw split_error{"The source set '" + path + "' does not exist"};
    split_source source;
    source.set = root.retrieve_set(path);

    const auto shape = source.set.shape(false);
    const auto& extents = shape.dimensions();
    if (extents.size() != 3 || strata::element_size(source.set.type()) == 0) {
        throw split_error{"The source set '" + path +
                          "' does not hold numbers by component, channel and sample"};
    }
    source.components = static_cast<std::uint64_t>(extents[0]);
    source.channels = static_cast<std::uint64_t>(extents[1]);
    source.samples = static_cast<std::uint64_t>(extents[2]);

    const auto labels = source.set.retrieve_attribute(attribute::labels);
    const bool labelled = labels && strata::element_kind(labels.type()) == data_type::string;
    if (source.channels > 0 && !labelled) {
        throw split_error{"The source set '" + path +
                          "' has no texts 'Labels', one for each channel"};
    }
    source.labels = read_texts(labels);
    source.number_of_samples =
        read_number(source.set, attribute::num_samples, data_type::int64, std::int64_t{extents[2]});
    source.sample_rate = read_number(source.set, attribute::sample_rate, data_type::float64, 0.0);
    source.start_time_s = read_number(source.set, attribute::start_time, data_type::float64, 0.0);
    source.row_attributes = find_row_attributes(source.set, source.channels);
    return source;
}

std::vector<std::string> read_texts(const strata::data_attribute& attribute) {
    if (!attribute || strata::element_kind(attribute.type()) != data_type::string)
        return {};
    text_buffer buffer{attribute.shape()};
    if (!attribute.read_value(buffer.data(), data_type::string))
        return {};
    return {buffer.texts().begin(), buffer.texts().end()};
}

} // namespace data_modifier
