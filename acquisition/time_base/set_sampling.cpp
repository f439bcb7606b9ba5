#include "acquisition/time_base/set_sampling.hpp"

#include <cmath>
#include <vector>

#include <fmt/format.h>

#include "acquisition/channels/channels.hpp"
#include "acquisition/time_base/rate_parameter.hpp"
#include "acquisition/time_base/resize_acquisition.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::sampling {

namespace attribute = schema::attribute;

namespace {

constexpr double exact_counts = 9007199254740992.0; // 2^53: whole numbers have gaps beyond

/// Writes an attribute of a device group and of each of its sets.
void write_to_group_and_sets(const strata::data_group& group, const char* name, double value) {
    write_or_create(group, name, value);
    for (const auto& set : sets_of(group))
        write_or_create(set, name, value);
}

/// Writes an attribute of a raw set, where the acquisition has that set.
template <typename Native>
void write_to_raw_set(const strata::data_group& root, const char* path, const char* name,
                      Native value) {
    if (root.exists_set(path))
        write_or_create(root.retrieve_set(path), name, value);
}

/// Frame count of the raw points at a new rate; RuntimeError when no count can hold it.
std::int64_t rescaled_count(double rate, double former_rate, double count) {
    const double rescaled = rate / former_rate * count;
    if (!(rescaled < exact_counts))
        throw_runtime_error(fmt::format("The frequency is too high, current is : {}", rate));
    return static_cast<std::int64_t>(rescaled);
}

/// Samples of an analog channel; RuntimeError when no count can hold them.
std::int64_t analog_sample_count(double frames, int ratio) {
    if (!(frames * ratio < largest_count))
        throw_runtime_error(fmt::format(
            "The number of analog samples per 3D frame is too high, current is : {}", ratio));
    return static_cast<std::int64_t>(frames * ratio);
}

void require_no_channels(const strata::data_group& analogs) {
    if (!analogs.list_set_children_name().empty()) {
        // Kept with its wording: scripts compare this text.
        throw_runtime_error("Impossible to modify of the number of analog samples per 3D frames "
                            "when the acquisition "
                            "already contains analog channels.");
    }
}

void require_frames(int frames) {
    if (frames < 0)
        throw_runtime_error(
            fmt::format("The number of frames cannot be negative, current is : {}", frames));
}

/// What a new ratio changes.
struct ratio_change {
    strata::data_group analogs;
    strata::data_group header;
    std::int64_t samples; ///< of an analog channel
};

/// RuntimeError unless the ratio can become `ratio`; changes nothing.
ratio_change checked_ratio_change(const strata::data_store& acquisition, int ratio) {
    require_ratio(ratio);
    const auto root = acquisition.root();
    ratio_change change{retrieve_group(root, schema::analogs_export), {}, 0};
    require_no_channels(change.analogs);
    change.header = retrieve_group(root, schema::header);
    change.samples = analog_sample_count(point_frame_number(acquisition), ratio);
    return change;
}

void move_events(const std::vector<strata::data_set>& events, float shift) {
    for (const auto& set : events) {
        std::vector<float> times;
        if (!read_vector(select_all(set), times))
            continue;
        for (auto& time : times)
            time += shift;
        write_vector(select_all(set), times);
    }
}

} // namespace

void require_ratio(int ratio) {
    if (ratio < 1)
        throw_runtime_error("Ratio cannot be lower than 1");
}

void set_frequency(strata::data_store acquisition, double rate) {
    if (!std::isfinite(rate) || rate < 0.0)
        throw_runtime_error(
            fmt::format("The frequency must be a positive number or 0, current is : {}", rate));
    const auto root = acquisition.root();
    const double former_rate = point_frequency(acquisition);
    const auto groups = point_groups(root);
    const double analog_rate = rate * analog_samples_per_frame(acquisition);
    if (!std::isfinite(analog_rate))
        throw_runtime_error(fmt::format("The frequency is too high, current is : {}", rate));
    const bool counts_frames = former_rate > 0.0 && root.exists_set(schema::points);
    const auto count =
        counts_frames ? rescaled_count(rate, former_rate, point_frame_number(acquisition)) : -1;

    write_to_raw_set(root, schema::points, attribute::sample_rate, rate);
    if (count >= 0)
        write_to_raw_set(root, schema::points, attribute::num_samples, count);
    for (const auto& group : groups)
        write_to_group_and_sets(group, attribute::sample_rate, rate);
    write_to_raw_set(root, schema::analogs, attribute::sample_rate, analog_rate);
    if (root.exists_group(schema::analogs_export)) {
        write_to_group_and_sets(root.retrieve_group(schema::analogs_export), attribute::sample_rate,
                                analog_rate);
    }
    tell_rate(root, schema::metadata_point, rate);
    tell_rate(root, schema::metadata_analog, analog_rate);
}

void set_frame_number(strata::data_store acquisition, int frames) {
    require_frames(frames);
    resize_to_frames(acquisition, static_cast<std::uint64_t>(frames));
}

void set_frame_number(strata::data_store acquisition, int frames, int ratio) {
    require_frames(frames);
    (void)checked_ratio_change(acquisition, ratio);
    require_memory_for_frames(acquisition, static_cast<std::uint64_t>(frames), ratio);
    set_analog_samples_per_frame(acquisition, ratio);
    set_frame_number(acquisition, frames);
}

void set_first_frame(strata::data_store acquisition, int first) {
    set_first_frame(acquisition, first, 0);
}

void set_first_frame(strata::data_store acquisition, int first, int shift_events) {
    if (first < 0)
        throw_runtime_error(
            fmt::format("The first frame cannot be negative, current is : {}", first));
    const auto root = acquisition.root();
    const auto markers = retrieve_group(root, schema::markers);
    const auto rate = read<float>(markers.retrieve_attribute(attribute::sample_rate));
    if (rate == 0.0F && first != 0)
        throw_runtime_error("Frequency is not set, impossible to set another first frame than 0");
    const auto moved_events = shift_events != 0 ? sets_of(retrieve_group(root, schema::events))
                                                : std::vector<strata::data_set>();
    const auto groups = point_groups(root);
    const auto analogs = retrieve_group(root, schema::analogs_export);
    const auto former_start = read<float>(markers.retrieve_attribute(attribute::start_time));
    const float start = first == 0 ? 0.0F : static_cast<float>(first) / rate;
    if (!std::isfinite(start))
        throw_runtime_error(
            fmt::format("The frequency is too low to set the first frame {}", first));

    move_events(moved_events, start - former_start);
    for (const auto& group : groups)
        write_to_group_and_sets(group, attribute::start_time, double{start});
    write_to_group_and_sets(analogs, attribute::start_time, double{start});
    write_to_raw_set(root, schema::points, attribute::start_time, double{start});
    write_to_raw_set(root, schema::analogs, attribute::start_time, double{start});
}

void set_analog_samples_per_frame(strata::data_store acquisition, int ratio) {
    const auto [analogs, header, samples] = checked_ratio_change(acquisition, ratio);
    const auto root = acquisition.root();
    const double rate = point_frequency(acquisition) * ratio;
    write_or_create(header, attribute::analog_samples_per_frame, std::int32_t{ratio});
    write_or_create(analogs, attribute::num_samples, samples);
    write_or_create(analogs, attribute::sample_rate, rate);
    write_to_raw_set(root, schema::analogs, attribute::num_samples, samples);
    write_to_raw_set(root, schema::analogs, attribute::sample_rate, rate);
    tell_rate(root, schema::metadata_analog, rate);
    resize_channels_to_come(acquisition);
}

void set_time_base(strata::data_store acquisition, double rate, int ratio, int frames) {
    require_frames(frames);
    require_ratio(ratio);
    const auto header = retrieve_group(acquisition.root(), schema::header);
    const auto count = static_cast<std::uint64_t>(frames);
    require_memory_for_frames(acquisition, count, ratio);
    const auto former = sampling::analog_samples_per_frame(acquisition);
    write_or_create(header, attribute::analog_samples_per_frame, std::int32_t{ratio});
    try {
        set_frequency(acquisition, rate);
    } catch (...) {
        write_or_create(header, attribute::analog_samples_per_frame,
                        static_cast<std::int32_t>(former));
        throw;
    }
    resize_to_frames(acquisition, count);
}

void set_analog_resolution(strata::data_store acquisition, int bits) {
    if (bits != 8 && bits != 12 && bits != 14 && bits != 16)
        throw_runtime_error("Invalid analog resolution.");
    write_or_create(retrieve_group(acquisition.root(), schema::metadata_analog),
                    schema::parameter::bits, std::int32_t{bits});
}

void set_interpolation_gap(strata::data_store acquisition, int gap) {
    write_or_create(retrieve_group(acquisition.root(), schema::header),
                    attribute::interpolation_gap, std::int32_t{gap});
}

} // namespace mox::sampling
