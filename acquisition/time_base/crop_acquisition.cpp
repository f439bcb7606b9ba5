#include "acquisition/time_base/crop_acquisition.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <strata/access/draft_set.hpp>

#include "acquisition/channels/channels.hpp"
#include "acquisition/time_base/cut_set.hpp"
#include "acquisition/time_base/resize_rotations.hpp"
#include "acquisition/time_base/sample_agreement.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::sampling {

namespace attribute = schema::attribute;

namespace {

/// The sets that are cut and what is to be in them; complete before any of them changes.
class cut_sets {
  public:
    void add(const strata::data_set& set, sample_range kept, const char* reliabilities) {
        drafts_.emplace_back(set, cut_of(set, kept, reliabilities));
    }

    void take_effect() const noexcept {
        for (const auto& [set, draft] : drafts_)
            strata::exchange_content(set, draft);
    }

  private:
    std::vector<std::pair<strata::data_set, strata::data_set>> drafts_; // beside what it becomes
};

std::uint64_t samples_of_set(const strata::data_set& set) {
    return static_cast<std::uint64_t>(set.shape(false).dimensions().back());
}

void add_channels(cut_sets& cuts, const strata::data_group& group, sample_range kept) {
    for (const auto& set : sets_of(group)) {
        if (samples_of_set(set) < kept.first + kept.count)
            throw swig_error(error_code::value,
                             fmt::format("The channel '{}' has {} samples; there are none up to {}",
                                         set.name(), samples_of_set(set), kept.first + kept.count));
        cuts.add(set, kept, attribute::residuals);
    }
}

/// Rotations may be fewer than belong to the frames, where a file was cut short.
void add_rotations(cut_sets& cuts, const std::vector<strata::data_set>& rotations,
                   sample_range kept) {
    for (const auto& set : rotations) {
        const auto held = samples_of_set(set);
        const auto first = std::min(kept.first, held);
        cuts.add(set, {first, std::min(kept.count, held - first)}, attribute::reliability);
    }
}

void write_count(const strata::data_group& root, const char* raw_set, std::uint64_t count) {
    if (root.exists_set(raw_set))
        write_or_create(root.retrieve_set(raw_set), attribute::num_samples,
                        static_cast<std::int64_t>(count));
}

void write_count(const strata::data_group& group, std::uint64_t count) {
    write_or_create(group, attribute::num_samples, static_cast<std::int64_t>(count));
}

/// The group of the analog channels, which reading may not have left.
std::vector<strata::data_group> analog_groups(const strata::data_group& root) {
    if (!root.exists_group(schema::analogs_export))
        return {};
    return {root.retrieve_group(schema::analogs_export)};
}

sample_range samples_of_frames(sample_range frames, std::uint64_t ratio) {
    return {frames.first * ratio, frames.count * ratio};
}

} // namespace

void crop(strata::data_store acquisition, int first, int frames) {
    if (first < 0 || frames < 0)
        throw swig_error(error_code::value,
                         fmt::format("{} frames from {} on are none to keep", frames, first));
    const auto root = acquisition.root();
    const sample_range kept{static_cast<std::uint64_t>(first), static_cast<std::uint64_t>(frames)};
    const auto of_analogs =
        samples_of_frames(kept, static_cast<std::uint64_t>(analog_samples_of_frames(root, 1.0)));
    const auto of_rotations = samples_of_frames(kept, rotations_in_frame(root));
    const auto points = point_groups(root);
    const auto analogs = analog_groups(root);

    cut_sets cuts;
    for (const auto& group : points)
        add_channels(cuts, group, kept);
    for (const auto& group : analogs)
        add_channels(cuts, group, of_analogs);
    add_rotations(cuts, all_rotations(root), of_rotations);

    cuts.take_effect();
    for (const auto& group : points)
        write_count(group, kept.count);
    write_count(root, schema::points, kept.count);
    for (const auto& group : analogs)
        write_count(group, of_analogs.count);
    write_count(root, schema::analogs, of_analogs.count);
    write_count(root, schema::rotations, of_rotations.count);
}

} // namespace mox::sampling
