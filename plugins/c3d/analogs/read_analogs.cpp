#include "plugins/c3d/analogs/read_analogs.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <strata/data_set.hpp>
#include <strata/data_type.hpp>

#include "plugins/c3d/analogs/read_scaling.hpp"
#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/samples/buffer_elements.hpp"
#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

/// A list that ends before, or is missing, tells no range: 0.
std::vector<std::int32_t> gain_codes(const parameter_table& parameters, std::size_t channels) {
    const channel_entries entries(parameters, "ANALOG", "GAIN", single_value::of_all_channels);
    std::vector<std::int32_t> codes(channels);
    for (std::size_t i = 0; i < channels; ++i) {
        codes[i] = gain_code_of(entries.number(i).value_or(0.0));
    }
    return codes;
}

std::vector<std::string> texts_of(const parameter_table& parameters, std::string_view name,
                                  std::size_t channels, single_value single) {
    const channel_entries entries(parameters, "ANALOG", name, single);
    std::vector<std::string> texts(channels);
    for (std::size_t i = 0; i < channels; ++i)
        texts[i] = entries.text(i).value_or("");
    return texts;
}

std::vector<std::string> labels_of(const parameter_table& parameters, std::size_t channels) {
    return texts_of(parameters, "LABELS", channels, single_value::of_first_channel);
}

std::vector<std::string> units_of(const parameter_table& parameters, std::size_t channels) {
    return texts_of(parameters, "UNITS", channels, single_value::of_all_channels);
}

} // namespace

std::int32_t gain_code_of(double stored) noexcept {
    constexpr double most = 5.0;
    return stored >= 0.0 && stored <= most ? static_cast<std::int32_t>(stored) : 0;
}

std::vector<float*> analog_samples::targets() const {
    std::vector<float*> result;
    result.reserve(channels.size());
    for (const auto& channel : channels)
        result.push_back(floats_of(channel).data());
    return result;
}

analog_samples allocate_analogs(const frame_layout& layout, std::uint64_t channels) {
    return {strata::channel_buffer::allocate(strata::data_type::float32,
                                             layout.frames * layout.samples_per_frame,
                                             static_cast<std::size_t>(channels))};
}

void add_unread_analogs(schema::unread_channels& unread, const c3d_file& file,
                        const frame_layout& layout) {
    const auto channels = static_cast<std::size_t>(layout.channels);
    const auto labels = labels_of(file.parameters, channels);
    const auto names = schema::distinct_names(labels);
    const auto units = units_of(file.parameters, channels);
    for (std::size_t i = 0; i < channels; ++i)
        unread.add(schema::name::analogs, labels[i].empty() ? names[i] : labels[i], units[i]);
}

void create_analogs(strata::data_group& data, const c3d_file& file, const frame_layout& layout,
                    analog_samples samples, schema::warnings& notes) {
    const auto& parameters = file.parameters;
    const auto channels = samples.channels.size();
    const auto count = layout.frames * layout.samples_per_frame;
    const auto scaling = apply_scaling(samples.channels, parameters, layout.storage, notes);
    auto set = strata::create_channel_set(data, schema::name::analogs, 1, count,
                                          std::move(samples.channels));
    const auto labels = labels_of(parameters, channels);
    schema::write_texts(set, attribute::labels, labels);
    schema::write_texts(set, attribute::set_names, schema::distinct_names(labels));
    schema::write_texts(set, attribute::units, units_of(parameters, channels));
    schema::write_numbers(set, attribute::gain, gain_codes(parameters, channels));
    schema::write_numbers(set, attribute::scales, scaling.scales);
    schema::write_numbers(set, attribute::offsets, scaling.offsets);
    schema::write_texts(
        set, attribute::descriptions,
        texts_of(parameters, "DESCRIPTIONS", channels, single_value::of_first_channel));
    schema::write_texts(set, attribute::types,
                        std::vector<std::string>(channels, schema::analog_type));
    schema::write_number(set, attribute::num_samples, static_cast<std::int64_t>(count));
    schema::write_number(set, attribute::sample_rate, layout.analog_rate);
    schema::write_number(set, attribute::start_time, layout.start_time_s());
}

} // namespace c3d
