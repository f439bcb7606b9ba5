#include "tests/cpp/c3d/support/writing.hpp"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include <strata/plugin/channel_buffer.hpp>

#include "plugins/c3d/events/events_detect.hpp"
#include "plugins/c3d/exporter.hpp"
#include "schema/point_kind_table.hpp"
#include "schema/read_attribute.hpp"
#include "schema/split_record.hpp"
#include "schema/write_attribute.hpp"
#include "tests/cpp/c3d/support/line_collector.hpp"

namespace c3d_test {

namespace {

void describe_group(strata::data_group group, std::int64_t samples, double rate, double start) {
    schema::write_number(group, "NumSamples", samples);
    schema::write_number(group, "SampleRate", rate);
    schema::write_number(group, "StartTime", start);
}

strata::data_set share(const strata::data_set& source, std::uint64_t channel,
                       strata::data_group group, const std::string& name) {
    const auto extents = source.shape(false).dimensions();
    auto set = strata::create_channel_set(
        std::move(group), name, static_cast<std::uint64_t>(extents[0]),
        static_cast<std::uint64_t>(extents[2]), {strata::share_channel(source, channel)});
    schema::write_number(set, "RelativeSetIndex", static_cast<std::int32_t>(channel));
    for (const auto& [array, single] : {std::pair{"Labels", "Label"}, std::pair{"Units", "Unit"},
                                        std::pair{"Descriptions", "Description"}}) {
        schema::write_text(set, single,
                           schema::read_texts(source.retrieve_attribute(array)).at(channel));
    }
    return set;
}

strata::data_group group_like(strata::data_group data, const std::string& name,
                              const strata::data_set& source) {
    auto group = data.create_group(name);
    const auto number = [&](const char* attribute) {
        return schema::read_number<double>(source.retrieve_attribute(attribute)).value();
    };
    describe_group(group, static_cast<std::int64_t>(number("NumSamples")), number("SampleRate"),
                   number("StartTime"));
    return group;
}

void split_points(strata::data_group data) {
    const auto source = data.retrieve_set("Points");
    for (const auto& kind : schema::point_kind_table)
        group_like(data, std::string(kind.group_name), source);
    const auto types = schema::read_texts(source.retrieve_attribute("Types"));
    const auto names = schema::read_texts(source.retrieve_attribute("SetNames"));
    for (std::size_t i = 0; i < types.size(); ++i) {
        const auto* kind =
            std::find_if(schema::point_kind_table.begin(), schema::point_kind_table.end(),
                         [&](const auto& row) { return row.word == types[i]; });
        auto set = share(source, i, data.retrieve_group(kind->group_name), names[i]);
        strata::create_row_attribute(set, "Residuals",
                                     strata::share_row(source.retrieve_attribute("Residuals"), i));
    }
    schema::record_split(source, names.size());
}

void split_analogs(strata::data_group data) {
    const auto source = data.retrieve_set("Analogs");
    const auto group = group_like(data, "AnalogsExport", source);
    const auto names = schema::read_texts(source.retrieve_attribute("SetNames"));
    const auto numbers = [&](const char* name) {
        return schema::read_numbers<double>(source.retrieve_attribute(name));
    };
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto set = share(source, i, group, names[i]);
        schema::write_number(set, "Gain", static_cast<std::int32_t>(numbers("Gain").at(i)));
        schema::write_number(set, "Scale", static_cast<float>(numbers("Scales").at(i)));
        schema::write_number(set, "Offset", static_cast<float>(numbers("Offsets").at(i)));
    }
    schema::record_split(source, names.size());
}

} // namespace

anvil::io_result filling_device::write(std::span<const std::byte> more) noexcept {
    ++calls;
    const auto taken =
        std::min<std::uint64_t>(more.size(), room - std::min<std::uint64_t>(room, bytes.size()));
    bytes.insert(bytes.end(), more.begin(), more.begin() + static_cast<std::ptrdiff_t>(taken));
    if (taken < more.size())
        return {static_cast<std::size_t>(taken),
                std::make_error_code(std::errc::no_space_on_device)};
    return {more.size(), {}};
}

bool writing::warns_about(std::string_view part) const {
    return std::any_of(warnings.begin(), warnings.end(),
                       [&](const auto& line) { return line.find(part) != std::string::npos; });
}

byte_vector writing::part(std::size_t offset, std::size_t count) const {
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(offset);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

writing write(const strata::data_store& acquisition, filling_device& device) {
    auto sink = std::make_shared<line_collector>();
    anvil::install_default_log_sink(sink);
    writing result;
    result.status = c3d::exporter().write(device, acquisition.root());
    anvil::install_default_log_sink(nullptr);
    result.warnings = std::move(sink->lines);
    return result;
}

writing write(const strata::data_store& acquisition) {
    filling_device device;
    auto result = write(acquisition, device);
    result.bytes = std::move(device.bytes);
    return result;
}

reading opened(byte_vector bytes) {
    auto result = read(std::move(bytes));
    auto root = result.store.root();
    if (!result.status)
        return result;
    split_points(root.retrieve_group("Format/Data"));
    split_analogs(root.retrieve_group("Format/Data"));
    result.status.add(c3d::events_detect().evaluate(
        root,
        {{"SourceGroup", ""}, {"DestinationGroup", "Format/Events"}, {"PartSeparator", "_"}}));
    return result;
}

new_acquisition::new_acquisition(std::int64_t frames, double rate, int ratio) : frames_(frames) {
    auto root = store.root();
    for (const auto& kind : schema::point_kind_table) {
        describe_group(root.create_group("Format/Data/" + std::string(kind.group_name)), frames,
                       rate, 0.0);
    }
    describe_group(root.create_group("Format/Data/AnalogsExport"), frames * ratio, rate * ratio,
                   0.0);
    auto header = root.create_group("Format/Header");
    schema::write_number(header, "NumberAnalogSamplesPerPointSample", std::int32_t{ratio});
    auto analog = root.create_group("Format/Metadata/ANALOG");
    schema::write_number(analog, "BITS", std::int32_t{12});
    root.create_group("Format/Events");
}

strata::data_group new_acquisition::group(std::string_view path) const {
    return store.root().retrieve_group(path);
}

strata::data_set new_acquisition::add_point(const std::string& group_name, const std::string& label,
                                            const std::vector<double>& samples) {
    const strata::data_shape shape({3, 1, frames_}, false);
    auto set =
        group("Format/Data/" + group_name).create_set(label, shape, strata::data_type::float64);
    const auto frames = static_cast<std::size_t>(frames_);
    std::vector<double> values(3 * frames);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = samples[i % frames * 3 + i / frames];
    (void)set.select(shape, false).write_value(values.data(), strata::data_type::float64);
    schema::write_number(set, "RelativeSetIndex", points_++);
    schema::write_text(set, "Label", label);
    schema::write_text(set, "Unit", "Unknown");
    return set;
}

strata::data_set new_acquisition::add_analog(const std::string& label,
                                             const std::vector<double>& samples) {
    const strata::data_shape shape({1, 1, static_cast<std::int64_t>(samples.size())}, false);
    auto set =
        group("Format/Data/AnalogsExport").create_set(label, shape, strata::data_type::float64);
    (void)set.select(shape, false).write_value(samples.data(), strata::data_type::float64);
    schema::write_number(set, "RelativeSetIndex", channels_++);
    schema::write_text(set, "Label", label);
    schema::write_text(set, "Unit", "V");
    schema::write_number(set, "Gain", std::int32_t{0});
    schema::write_number(set, "Offset", 0.0F);
    schema::write_number(set, "Scale", 1.0F);
    return set;
}

strata::data_set new_acquisition::add_event(const std::string& context, const std::string& label,
                                            const std::vector<float>& times) {
    const strata::data_shape shape({static_cast<std::int64_t>(times.size())}, false);
    auto set =
        group("Format/Events").create_set(context + label, shape, strata::data_type::float32);
    (void)set.select(shape, false).write_value(times.data(), strata::data_type::float32);
    schema::write_text(set, "Context", context);
    return set;
}

void change_number(strata::data_set set, const char* name, double value) {
    (void)set.retrieve_attribute(name).write_value(&value, strata::data_type::float64);
}

} // namespace c3d_test
