#include "examples/plugin/table_importer.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include <strata/plugin/channel_buffer.hpp>

#include "examples/plugin/table_text.hpp"

namespace example {

namespace {

using strata::data_shape;
using strata::data_type;

std::string read_all(anvil::io_device& device) {
    std::string text(device.size(), '\0');
    const auto result = device.read_at(0, std::as_writable_bytes(std::span{text}));
    if (result.error)
        throw table_error{"byte " + std::to_string(result.bytes) + ": " + result.error.message()};
    text.resize(result.bytes);
    return text;
}

template <typename Number>
void give_number(strata::data_set& set, const char* name, data_type type, Number value) {
    static_cast<void>(set.create_attribute(name, data_shape{}, type).write_value(&value, type));
}

void give_texts(strata::data_set& set, const char* name, const std::vector<std::string>& texts) {
    std::vector<const char*> pointers;
    pointers.reserve(texts.size());
    for (const auto& text : texts)
        pointers.push_back(text.c_str());
    const data_shape shape{{static_cast<std::int64_t>(texts.size())}, false};
    static_cast<void>(
        set.create_attribute(name, shape, data_type::string)
            .write_value(static_cast<const void*>(pointers.data()), data_type::string));
}

/// The samples go straight into the memory that the set keeps: one buffer for each channel.
strata::data_set create_samples(strata::data_group& data, const table& content) {
    const auto channels = content.labels.size();
    const auto samples = content.rows.size();
    auto buffers = strata::channel_buffer::allocate(data_type::float64, samples, channels);
    for (std::size_t channel = 0; channel < channels; ++channel) {
        for (std::size_t sample = 0; sample < samples; ++sample) {
            const double value = content.rows[sample][channel];
            std::memcpy(buffers[channel].data() + sample * sizeof value, &value, sizeof value);
        }
    }
    return strata::create_channel_set(data, "Analogs", 1, samples, std::move(buffers));
}

} // namespace

bool table_importer::accepts(anvil::io_device& device) const {
    std::array<char, table_signature.size()> start{};
    const auto result = device.read_at(0, std::as_writable_bytes(std::span{start}));
    return result.bytes == start.size() && std::ranges::equal(start, table_signature);
}

anvil::status table_importer::read(anvil::io_device& device, strata::data_group target) const {
    try {
        // Everything that can be wrong with the file shows before the tree is touched.
        const auto content = parse_table(read_all(device));
        auto data = target.create_group("Format/Data");
        auto set = create_samples(data, content);
        give_number(set, "NumSamples", data_type::int64,
                    static_cast<std::int64_t>(content.rows.size()));
        give_number(set, "SampleRate", data_type::float64, content.sample_rate);
        give_number(set, "StartTime", data_type::float64, 0.0);
        give_texts(set, "Labels", content.labels);
        return {};
    } catch (const std::exception& failure) {
        // Nothing is thrown across the plugin's boundary.
        return anvil::status::failure(std::string{"'"}.append(device.name()) + "', " +
                                      failure.what());
    }
}

} // namespace example
