#include "acquisition/time_base/resize_rotations.hpp"

#include <array>
#include <utility>

#include "acquisition/time_base/resize_channels.hpp"
#include "schema/names.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

/// The rotations of all segments: {4, 4, samples} each.
std::vector<strata::data_set> rotations_of(const strata::data_group& root) {
    std::vector<strata::data_set> rotations;
    if (!root.exists_group(schema::segments))
        return rotations;
    const auto segments = root.retrieve_group(schema::segments);
    for (const auto& name : segments.list_group_children_name()) {
        const auto segment = segments.retrieve_group(name);
        if (!segment.exists_set(schema::name::segment_rotations))
            continue;
        auto set = segment.retrieve_set(schema::name::segment_rotations);
        if (set.shape(false).dimensions().size() == 3)
            rotations.push_back(std::move(set));
    }
    return rotations;
}

strata::data_set raw_rotations(const strata::data_group& root) {
    return root.exists_set(schema::rotations) ? root.retrieve_set(schema::rotations)
                                              : strata::data_set();
}

void resize_samples(strata::data_set set, std::uint64_t samples) {
    const auto held = set.shape(false).dimensions();
    const std::array<std::uint64_t, 3> extent{static_cast<std::uint64_t>(held[0]),
                                              static_cast<std::uint64_t>(held[1]), samples};
    set.resize(extent.data(), extent.size());
    fill_with_nan(set, static_cast<std::uint64_t>(held[2]));
}

} // namespace

bool has_rotations(const strata::data_group& root) { return !rotations_of(root).empty(); }

std::uint64_t rotations_in_frame(const strata::data_group& root) {
    const auto raw = raw_rotations(root);
    return raw ? read<std::uint64_t>(raw.retrieve_attribute(schema::attribute::ratio), 1) : 1;
}

std::vector<strata::data_set> all_rotations(const strata::data_group& root) {
    auto rotations = rotations_of(root);
    if (auto raw = raw_rotations(root); raw && raw.shape(false).dimensions().size() == 3)
        rotations.push_back(std::move(raw));
    return rotations;
}

double elements_of_rotations(const strata::data_group& root, std::uint64_t frames) {
    constexpr double elements_of_sample = 17.0; // a matrix and its reliability
    return elements_of_sample * static_cast<double>(rotations_of(root).size()) *
           static_cast<double>(rotations_in_frame(root)) * static_cast<double>(frames);
}

void resize_rotations(const strata::data_group& root, std::uint64_t frames) {
    const auto samples = frames * rotations_in_frame(root);
    for (const auto& set : rotations_of(root)) {
        resize_samples(set, samples);
        resize_reliabilities(set, schema::attribute::reliability, samples);
    }
    const auto raw = raw_rotations(root);
    if (!raw)
        return;
    write_or_create(raw, schema::attribute::num_samples, static_cast<std::int64_t>(samples));
    // Samples that were cut off must not come back when a file is written.
    if (raw.shape(false).dimensions().size() == 3 &&
        static_cast<std::uint64_t>(raw.shape(false).dimensions()[2]) > samples)
        resize_samples(raw, samples);
}

} // namespace mox
