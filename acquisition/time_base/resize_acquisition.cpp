#include "acquisition/time_base/resize_acquisition.hpp"

#include <algorithm>
#include <new>
#include <optional>
#include <string_view>
#include <vector>

#include <strata/access/set_count.hpp>

#include "acquisition/channels/channels.hpp"
#include "acquisition/time_base/resize_channels.hpp"
#include "acquisition/time_base/resize_rotations.hpp"
#include "acquisition/time_base/sample_agreement.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "schema/names.hpp"
#include "schema/point_kind_table.hpp"
#include "store/path_helpers.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

namespace {

std::vector<group_extent> extents_of_points(const strata::data_group& root, std::uint64_t frames) {
    std::vector<group_extent> extents;
    for (const auto& group : point_groups(root))
        extents.push_back({group, frames});
    return extents;
}

group_extent extent_of_analogs(const strata::data_group& analogs, double samples) {
    if (!(samples < largest_count))
        throw std::bad_alloc();
    return {analogs, static_cast<std::uint64_t>(samples)};
}

/// The extents of all device groups; without `ratio` that of the acquisition counts.
std::vector<group_extent> extents_of_all(const strata::data_store& acquisition,
                                         std::uint64_t frames, std::optional<int> ratio = {}) {
    const auto root = acquisition.root();
    auto extents = extents_of_points(root, frames);
    const double samples_of_frame =
        ratio ? *ratio : sampling::analog_samples_per_frame(acquisition);
    extents.push_back(extent_of_analogs(retrieve_group(root, schema::analogs_export),
                                        samples_of_frame * static_cast<double>(frames)));
    return extents;
}

/// Writes a count into a raw set, where the acquisition has that set.
void write_raw_count(const strata::data_group& root, const char* path, std::uint64_t samples) {
    if (root.exists_set(path))
        write_or_create(root.retrieve_set(path), attribute::num_samples,
                        static_cast<std::int64_t>(samples));
}

bool has_extent(const group_extent& extent) { return samples_of(extent.group) == extent.samples; }

bool awaits_channels(const strata::data_group& root, std::string_view path) {
    return root.exists_group(path) && strata::set_count(root.retrieve_group(path)) == 0;
}

/// The frames come from nothing that a point group holds or that has its frames.
bool awaits_points(const strata::data_group& root) {
    return std::ranges::all_of(
               schema::point_kind_table,
               [&](const auto& kind) { return awaits_channels(root, kind.path); }) &&
           !has_rotations(root);
}

std::optional<std::uint64_t> frames_of_points_to_come(const strata::data_store& acquisition) {
    const auto root = acquisition.root();
    if (root.exists_group(schema::analogs_export) && !awaits_channels(root, schema::analogs_export))
        return frames_of_analog_samples(root,
                                        samples_of(root.retrieve_group(schema::analogs_export)));
    const auto frames = counted_frames(acquisition);
    return frames ? std::optional(static_cast<std::uint64_t>(*frames)) : std::nullopt;
}

std::optional<std::uint64_t> samples_of_analogs_to_come(const strata::data_store& acquisition) {
    const auto frames = counted_frames(acquisition);
    if (!frames)
        return std::nullopt;
    const auto samples = analog_samples_of_frames(acquisition.root(), *frames);
    return samples < largest_count ? std::optional(static_cast<std::uint64_t>(samples))
                                   : std::nullopt;
}

void resize_analog_group(const strata::data_group& root, std::uint64_t samples) {
    resize_device_groups({{retrieve_group(root, schema::analogs_export), samples}});
    write_raw_count(root, schema::analogs, samples);
}

} // namespace

void require_memory_for_frames(const strata::data_store& acquisition, std::uint64_t frames,
                               int ratio) {
    require_memory(extents_of_all(acquisition, frames, ratio),
                   elements_of_rotations(acquisition.root(), frames));
}

void resize_to_frames(const strata::data_store& acquisition, std::uint64_t frames) {
    const auto root = acquisition.root();
    const auto extents = extents_of_all(acquisition, frames);
    require_memory(extents, elements_of_rotations(root, frames));
    resize_rotations(root, frames);
    resize_device_groups(extents);
    write_raw_count(root, schema::points, frames);
    write_raw_count(root, schema::analogs, extents.back().samples);
}

void resize_points(const strata::data_store& acquisition, std::uint64_t frames) {
    const auto root = acquisition.root();
    auto extents = extents_of_points(root, frames);
    std::erase_if(extents, has_extent);
    if (!extents.empty()) {
        require_memory(extents, elements_of_rotations(root, frames));
        resize_rotations(root, frames);
        resize_device_groups(extents);
        write_raw_count(root, schema::points, frames);
    }
    resize_channels_to_come(acquisition);
}

void resize_analogs(const strata::data_store& acquisition, std::uint64_t samples) {
    resize_analog_group(acquisition.root(), samples);
    resize_channels_to_come(acquisition);
}

void resize_channels_to_come(const strata::data_store& acquisition) {
    const auto root = acquisition.root();
    if (awaits_points(root)) {
        // The count of the file's points stays: it tells how many values a new rate takes.
        if (const auto frames = frames_of_points_to_come(acquisition))
            resize_device_groups(extents_of_points(root, *frames));
    }
    if (awaits_channels(root, schema::analogs_export)) {
        if (const auto samples = samples_of_analogs_to_come(acquisition))
            resize_analog_group(root, *samples);
    }
}

} // namespace mox
