#include "acquisition/new_acquisition.hpp"

#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <strata/access/copy_store.hpp>

#include "acquisition/channels/channels.hpp"
#include "acquisition/time_base/resize_channels.hpp"
#include "acquisition/time_base/set_sampling.hpp"
#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "schema/point_kind_table.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::lifecycle {

namespace {

void require_count(std::string_view what, int count) {
    if (count < 0)
        throw_runtime_error(
            fmt::format("The number of {} cannot be negative, current is : {}", what, count));
}

} // namespace

strata::data_store empty_acquisition() {
    strata::data_store acquisition;
    auto root = acquisition.root();
    auto format = root.create_group(schema::format);
    auto data = root.create_group(schema::data);
    auto metadata = root.create_group(schema::metadata);
    auto analog_parameters = root.create_group(schema::metadata_analog);
    write_or_create(analog_parameters, schema::parameter::bits,
                    std::int32_t{schema::default_analog_resolution});
    auto header = root.create_group(schema::header);
    write_or_create(header, schema::attribute::analog_samples_per_frame, std::int32_t{0});
    write_or_create(header, schema::attribute::interpolation_gap, std::int32_t{0});
    write_or_create(header, schema::attribute::analog_values_per_frame, std::int32_t{0});
    auto events = root.create_group(schema::events);
    create_text(events, schema::attribute::device_type, schema::device::event_to_export);
    for (const auto& kind : schema::point_kind_table)
        create_device_group(data, std::string(kind.group_name), schema::device::mocap);
    create_device_group(data, schema::name::analogs_export, schema::device::emg);
    create_text(metadata, schema::attribute::device_type, schema::device::metadata);
    return acquisition;
}

strata::data_store new_acquisition(int points, int frames, int analogs, int ratio) {
    require_count("points", points);
    require_count("frames", frames);
    require_count("analog channels", analogs);
    sampling::require_ratio(ratio);
    const auto wide = [](int count) { return static_cast<std::uint64_t>(count); };
    require_memory(channel_overhead * (static_cast<double>(points) + analogs) +
                   frames * (3.0 * points + static_cast<double>(analogs) * ratio));

    auto acquisition = empty_acquisition();
    auto root = acquisition.root();
    std::vector<group_extent> extents;
    extents.reserve(schema::point_kind_table.size());
    for (const auto& kind : schema::point_kind_table)
        extents.push_back({retrieve_group(root, kind.path), wide(frames)});
    resize_device_groups(extents);
    sampling::set_analog_samples_per_frame(acquisition, ratio);
    auto markers = retrieve_group(root, schema::markers);
    for (std::int32_t index = 0; index < points; ++index)
        create_marker(markers, schema::unnamed_channel(index), index);
    add_analog_channels(retrieve_group(root, schema::analogs_export), 0, analogs);
    return acquisition;
}

strata::data_store new_acquisition() { return new_acquisition(0, 0, 0, 1); }
strata::data_store new_acquisition(int points) { return new_acquisition(points, 0, 0, 1); }
strata::data_store new_acquisition(int points, int frames) {
    return new_acquisition(points, frames, 0, 1);
}
strata::data_store new_acquisition(int points, int frames, int analogs) {
    return new_acquisition(points, frames, analogs, 1);
}

strata::data_store copy(strata::data_store acquisition) { return strata::copy_store(acquisition); }

void close_acquisition(strata::data_store /*acquisition*/) {}

void delete_acquisition(strata::data_store /*acquisition*/) {}

} // namespace mox::lifecycle
