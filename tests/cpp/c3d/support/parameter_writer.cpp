#include "tests/cpp/c3d/support/parameter_writer.hpp"

#include <algorithm>

namespace c3d_test {

namespace {

std::byte byte_of(int value) { return static_cast<std::byte>(value & 0xFF); }

byte_vector head(int id, std::string_view name) {
    const bool locked = name.starts_with('-');
    if (locked)
        name.remove_prefix(1);
    const auto length = static_cast<int>(name.size());
    byte_vector bytes = {byte_of(locked ? -length : length), byte_of(id)};
    append(bytes, characters(name));
    return bytes;
}

} // namespace

parameter_writer& parameter_writer::group(int id, std::string_view name,
                                          std::string_view description) {
    append(records_, head(-id, name));
    next_field_ = records_.size();
    append(records_, word(format_, 3 + static_cast<int>(description.size())));
    records_.push_back(byte_of(static_cast<int>(description.size())));
    append(records_, characters(description));
    return *this;
}

parameter_writer& parameter_writer::record(int id, std::string_view name, int type,
                                           const std::vector<int>& dimensions,
                                           const byte_vector& data, std::string_view description) {
    append(records_, head(id, name));
    next_field_ = records_.size();
    const auto distance = 5 + dimensions.size() + data.size() + description.size();
    append(records_, word(format_, static_cast<int>(distance)));
    records_.push_back(byte_of(type));
    records_.push_back(byte_of(static_cast<int>(dimensions.size())));
    for (int extent : dimensions)
        records_.push_back(byte_of(extent));
    append(records_, data);
    records_.push_back(byte_of(static_cast<int>(description.size())));
    append(records_, characters(description));
    return *this;
}

parameter_writer& parameter_writer::words(int id, std::string_view name,
                                          const std::vector<int>& values,
                                          const std::vector<int>& dimensions) {
    byte_vector data;
    for (int value : values)
        append(data, word(format_, value));
    return record(id, name, 2, dimensions, data);
}

parameter_writer& parameter_writer::reals(int id, std::string_view name,
                                          const std::vector<float>& values,
                                          const std::vector<int>& dimensions) {
    byte_vector data;
    for (float value : values)
        append(data, real(format_, value));
    return record(id, name, 4, dimensions, data);
}

parameter_writer& parameter_writer::bytes(int id, std::string_view name,
                                          const std::vector<int>& values,
                                          const std::vector<int>& dimensions) {
    byte_vector data;
    for (int value : values)
        data.push_back(byte_of(value));
    return record(id, name, 1, dimensions, data);
}

parameter_writer& parameter_writer::texts(int id, std::string_view name,
                                          const std::vector<std::string>& values, int width) {
    byte_vector data;
    for (auto value : values) {
        value.resize(static_cast<std::size_t>(width), ' ');
        append(data, characters(value));
    }
    return record(id, name, -1, {width, static_cast<int>(values.size())}, data);
}

parameter_writer& parameter_writer::text(int id, std::string_view name, std::string_view value) {
    return record(id, name, -1, {static_cast<int>(value.size())}, characters(value));
}

parameter_writer& parameter_writer::raw(const byte_vector& bytes) {
    append(records_, bytes);
    return *this;
}

parameter_writer& parameter_writer::with_next(int distance) {
    const auto bytes = word(format_, distance);
    std::copy(bytes.begin(), bytes.end(),
              records_.begin() + static_cast<std::ptrdiff_t>(next_field_));
    return *this;
}

byte_vector parameter_writer::section() const {
    const auto blocks = (4 + records_.size() + 4 + 511) / 512;
    byte_vector bytes = hex("01 50");
    bytes.push_back(byte_of(static_cast<int>(blocks)));
    bytes.push_back(static_cast<std::byte>(format_));
    append(bytes, records_);
    bytes.resize(blocks * 512);
    return bytes;
}

} // namespace c3d_test
