#include "acquisition/time_base/sample_agreement.hpp"

#include <algorithm>
#include <string>

#include <fmt/format.h>
#include <strata/access/set_count.hpp>

#include "acquisition/channels/channels.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "schema/names.hpp"
#include "schema/point_kind_table.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

/// Frames that the point channels have. A change of rate leaves them until their values are set.
std::uint64_t frames_of_points(const strata::data_group& root) {
    for (const auto& kind : schema::point_kind_table) {
        if (root.exists_group(kind.path))
            return samples_of(root.retrieve_group(kind.path));
    }
    return 0;
}

bool has_points(const strata::data_group& root) {
    return std::ranges::any_of(schema::point_kind_table, [&](const auto& kind) {
        return root.exists_group(kind.path) &&
               strata::set_count(root.retrieve_group(kind.path)) != 0;
    });
}

/// What makes counts agree. Only the values of points make rotations follow another rate.
std::string remedy(const strata::data_store& acquisition, bool points) {
    if (!points)
        return "moxSetFrameNumber cuts or lengthens both";
    return fmt::format("moxSetPointsValues and moxSetAnalogsValues take the values of {} frames; "
                       "moxSetFrameNumber cuts or lengthens what is there",
                       sampling::point_frame_number(acquisition));
}

} // namespace

double analog_samples_of_frames(const strata::data_group& root, double frames) {
    const auto path =
        fmt::format("{}/{}", schema::header, schema::attribute::analog_samples_per_frame);
    const auto ratio =
        root.exists_attribute(path) ? read<double>(root.retrieve_attribute(path)) : 0.0;
    return frames * std::max(1.0, ratio);
}

std::optional<std::uint64_t> frames_of_analog_samples(const strata::data_group& root,
                                                      std::uint64_t samples) {
    const auto ratio = static_cast<std::uint64_t>(analog_samples_of_frames(root, 1.0));
    if (samples % ratio != 0)
        return std::nullopt;
    return samples / ratio;
}

std::optional<double> counted_frames(const strata::data_store& acquisition) {
    const auto root = acquisition.root();
    if (!root.exists_set(schema::points) && !root.exists_group(schema::angles))
        return std::nullopt;
    return sampling::point_frame_number(acquisition);
}

bool belong_to_frames(const strata::data_store& acquisition, std::uint64_t samples) {
    const auto frames = counted_frames(acquisition);
    return frames &&
           static_cast<double>(samples) == analog_samples_of_frames(acquisition.root(), *frames);
}

void require_sample_agreement(const strata::data_store& acquisition) {
    const auto root = acquisition.root();
    if (!root.exists_group(schema::analogs_export))
        return;
    const auto analogs = root.retrieve_group(schema::analogs_export);
    const auto samples = samples_of(analogs);
    const auto frames = frames_of_points(root);
    const auto wanted = analog_samples_of_frames(root, static_cast<double>(frames));
    if (strata::set_count(analogs) == 0 || static_cast<double>(samples) == wanted)
        return;
    const auto points = has_points(root);
    throw_runtime_error(fmt::format("Export to c3d failed : the {} have {} frames, to which {} "
                                    "analog samples belong, but the analog channels have {}. {}",
                                    points ? "points" : "rotations", frames, wanted, samples,
                                    remedy(acquisition, points)));
}

} // namespace mox
