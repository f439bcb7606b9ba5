#include "acquisition/resize_acquisition.hpp"

#include <new>
#include <optional>
#include <vector>

#include <strata/access/set_count.hpp>

#include "acquisition/channels.hpp"
#include "acquisition/resize_channels.hpp"
#include "acquisition/resize_rotations.hpp"
#include "acquisition/sample_agreement.hpp"
#include "acquisition/sampling.hpp"
#include "schema/names.hpp"
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

/// The analog channels to come, while there are none and their samples are not those of the frames.
std::optional<group_extent> extent_of_no_analogs(const strata::data_group& root,
                                                 std::uint64_t frames) {
    if (!root.exists_group(schema::analogs_export))
        return std::nullopt;
    const auto analogs = root.retrieve_group(schema::analogs_export);
    if (strata::set_count(analogs) != 0)
        return std::nullopt;
    return extent_of_analogs(analogs, analog_samples_of_frames(root, static_cast<double>(frames)));
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
    const auto analogs = extent_of_no_analogs(root, frames);
    std::erase_if(extents, has_extent);
    if (!extents.empty()) {
        require_memory(extents, elements_of_rotations(root, frames));
        resize_rotations(root, frames);
        resize_device_groups(extents);
        write_raw_count(root, schema::points, frames);
    }
    if (analogs && !has_extent(*analogs))
        resize_analogs(acquisition, analogs->samples);
}

void resize_analogs(const strata::data_store& acquisition, std::uint64_t samples) {
    const auto root = acquisition.root();
    resize_device_groups({{retrieve_group(root, schema::analogs_export), samples}});
    write_raw_count(root, schema::analogs, samples);
}

} // namespace mox
