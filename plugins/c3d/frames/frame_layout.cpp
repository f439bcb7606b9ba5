#include "plugins/c3d/frames/frame_layout.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "plugins/c3d/bytes/import_error.hpp"
#include "plugins/c3d/frames/frame_count.hpp"
#include "plugins/c3d/frames/layout_candidates.hpp"
#include "plugins/c3d/frames/rotation_layout.hpp"

namespace c3d {

namespace {

/// Without data no length bounds the count; this is the largest that the format can tell exactly.
constexpr std::uint64_t most_frames_without_data = 0xFFFFFFFF;

/// Where the data section ends: at the rotations, when they follow, else with the file.
std::uint64_t data_end(const c3d_file& file, std::uint64_t data_offset) {
    const auto block = file.parameters.count("ROTATION", "DATA_START").value_or(0);
    if (block == 0 || file.parameters.count("ROTATION", "USED").value_or(0) == 0)
        return file.size;
    const auto rotations = block_offset(file.origin, block);
    return rotations > data_offset && rotations < file.size ? rotations : file.size;
}

frame_room room_of(const c3d_file& file, const frame_layout& layout) {
    const auto end = data_end(file, layout.data_offset);
    return {end - layout.data_offset, layout.frame_bytes(),
            end == file.size ? file.zeros_at_end : 0};
}

/// How well a layout agrees with the file's length.
enum class agreement { none, by_other_count, by_count };

agreement agreement_of(const c3d_file& file, const frame_claims& claims,
                       const frame_layout& layout) {
    const auto room = room_of(file, layout);
    if (room.frame_bytes == 0) {
        return room.bytes < block_bytes ? agreement::by_count : agreement::none;
    }
    const auto claimed = claimed_frames(claims);
    if (!claimed || room.is_filled_by(claimed->frames))
        return agreement::by_count;
    return count_that_fills(claims, room) ? agreement::by_other_count : agreement::none;
}

/// The first layout that agrees best; the most trusted one when none does.
frame_layout best_layout(const c3d_file& file, const layout_candidates& candidates,
                         const frame_claims& claims) {
    std::optional<frame_layout> best;
    auto best_agreement = agreement::none;
    const auto consider = [&](const frame_layout& layout) {
        const auto found = agreement_of(file, claims, layout);
        if (best && found <= best_agreement)
            return;
        best = layout;
        best_agreement = found;
    };
    frame_layout layout;
    for (auto offset : candidates.data_offsets) {
        layout.data_offset = offset;
        for (auto points : candidates.points) {
            layout.points = points;
            for (auto storage : candidates.storages) {
                layout.storage = storage;
                for (const auto& grid : candidates.grids) {
                    layout.channels = grid.channels;
                    layout.samples_per_frame = grid.samples_per_frame;
                    consider(layout);
                }
            }
        }
    }
    return best.value_or(layout);
}

/// For a file whose data section lies outside: legal when there are no data.
frame_layout layout_without_data(const c3d_file& file, const layout_candidates& candidates) {
    frame_layout layout;
    layout.data_offset = file.size;
    layout.points = candidates.points.front();
    layout.storage = candidates.storages.front();
    layout.channels = candidates.grids.front().channels;
    layout.samples_per_frame = candidates.grids.front().samples_per_frame;
    return layout;
}

/// Texts that take bytes of the file; a width of 0 lets a parameter announce any number of them.
std::uint64_t stored_texts(const c3d_file& file, std::string_view group) {
    std::uint64_t count = 0;
    for (const auto* part : file.parameters.parts(group, "LABELS")) {
        if (part->type == element_type::character && !part->data.empty())
            count += part->text_count();
    }
    return count;
}

/// A file without frames may still name its channels; but only so many as it can name, whatever its
/// counts say.
void limit_channels_without_frames(const c3d_file& file, frame_layout& layout,
                                   schema::warnings& notes) {
    const auto limit = [&](std::uint64_t& count, const char* group) {
        const auto named = stored_texts(file, group);
        if (count <= named)
            return;
        notes.add(
            "{}:USED is {}, but without frames only the {} channels that have labels are kept",
            group, count, named);
        count = named;
    };
    limit(layout.points, "POINT");
    limit(layout.channels, "ANALOG");
}

/// A channel costs about this much beside its samples; counts that are lies can announce thousands
/// of channels that a short file has a sample or two of.
constexpr std::uint64_t bytes_beside_samples = 1024;
constexpr std::uint64_t bytes_always_allowed = std::uint64_t{1024} * 1024;

/// True when so few of the announced frames are there that the channels would cost more than the
/// file explains.
bool is_out_of_proportion(const c3d_file& file, const frame_layout& layout) {
    const auto cost = (layout.points + layout.channels) * bytes_beside_samples;
    return cost > 3 * file.size + bytes_always_allowed;
}

/// Without samples, only rotations can tell how many of the announced frames are there.
void limit_to_rotations(const c3d_file& file, const frame_count& claimed, frame_layout& layout,
                        schema::warnings& notes) {
    const auto held = frames_with_rotations(file, layout);
    if (held == 0 || held >= layout.frames)
        return;
    notes.add("{} says {} frames, the file holds rotations of {}; these are read", claimed.source,
              claimed.frames, held);
    layout.frames = held;
}

void count_frames(const c3d_file& file, const frame_claims& claims, frame_layout& layout,
                  schema::warnings& notes) {
    const auto claimed = claimed_frames(claims);
    if (layout.frame_bytes() == 0) {
        layout.frames = claimed ? std::min(claimed->frames, most_frames_without_data) : 0;
        if (claimed)
            limit_to_rotations(file, *claimed, layout, notes);
        return;
    }
    const auto room = room_of(file, layout);
    const bool is_cut = claimed && claimed->frames > room.most();
    if (is_cut && (room.most() == 0 || is_out_of_proportion(file, layout))) {
        throw import_error(layout.data_offset,
                           "{} frames of {} bytes ({} points, {} × {} analog samples) expected ({} "
                           "says so), found {} bytes",
                           claimed->frames, room.frame_bytes, layout.points, layout.channels,
                           layout.samples_per_frame, claimed->source, room.bytes);
    }
    layout.frames = reconciled_frames(claims, room, notes);
    if (layout.frames == 0)
        limit_channels_without_frames(file, layout, notes);
}

/// The magnitude of the scale; a scale of 0 or NaN scales nothing, and residuals count in units.
float scale_of(const c3d_file& file) {
    for (auto scale :
         {file.parameters.number("POINT", "SCALE").value_or(0.0), double{file.head.scale}}) {
        if (std::isfinite(scale) && scale != 0.0)
            return static_cast<float>(std::abs(scale));
    }
    return 1.0F;
}

/// The stored rate, when it is that of the samples; there is no other way to say a rate of 59.94 ×
/// 10 than as a real.
double analog_rate_of(const frame_layout& layout, double stored, schema::warnings& notes) {
    const auto samples = static_cast<double>(layout.samples_per_frame);
    const auto computed = samples * layout.point_rate;
    if (stored <= 0.0)
        return computed;
    if (layout.point_rate <= 0.0 ||
        std::abs(stored / layout.point_rate - samples) <= rate_tolerance * samples) {
        return stored;
    }
    notes.add(
        "ANALOG:RATE is {} Hz, but {} samples a frame at {} Hz are {} Hz; the latter is taken",
        stored, samples, layout.point_rate, computed);
    return computed;
}

void note_contradictions(const c3d_file& file, const frame_layout& layout,
                         schema::warnings& notes) {
    const auto compare = [&](const char* what, std::optional<std::uint64_t> stored,
                             std::uint64_t in_header, std::uint64_t taken) {
        const auto value = stored.value_or(in_header);
        if (value == in_header && value == taken)
            return;
        notes.add("{} is {}, the header says {}; {} fits the file and is taken", what, value,
                  in_header, taken);
    };
    const auto& parameters = file.parameters;
    compare("POINT:USED", parameters.count("POINT", "USED"), file.head.points, layout.points);
    const auto used = parameters.count("ANALOG", "USED");
    if (used) {
        compare("the number of analog samples in a frame by ANALOG:USED",
                *used * layout.samples_per_frame, file.head.analog_values,
                layout.channels * layout.samples_per_frame);
    }
    if (layout.frame_bytes() != 0 && file.origin == 0) {
        const auto block = layout.data_offset / block_bytes + 1;
        compare("POINT:DATA_START", parameters.count("POINT", "DATA_START"), file.head.data_start,
                block);
    }
    const auto scale = parameters.number("POINT", "SCALE");
    if (scale && std::signbit(*scale) != std::signbit(file.head.scale) && file.head.scale != 0.0F) {
        notes.add("POINT:SCALE is {}, the header says {}; the samples are read as {}", *scale,
                  file.head.scale, layout.storage == sample_storage::real ? "reals" : "integers");
    }
    const auto rate = parameters.number("POINT", "RATE");
    if (rate && *rate > 0.0 && file.head.rate > 0.0F && *rate != double{file.head.rate}) {
        notes.add("POINT:RATE is {} Hz, the header says {}; the former is taken", *rate,
                  file.head.rate);
    }
    if (layout.point_rate <= 0.0)
        notes.add("neither POINT:RATE nor the header tell the frame rate");
}

} // namespace

frame_layout decide_layout(const c3d_file& file, schema::warnings& notes) {
    const auto candidates = candidates_of(file);
    const auto claims = frame_claims_of(file);
    auto layout = candidates.data_offsets.empty() ? layout_without_data(file, candidates)
                                                  : best_layout(file, candidates, claims);
    layout.point_rate = candidates.point_rate;
    count_frames(file, claims, layout, notes);
    layout.first_frame = first_frame_number(claims, layout.frames);
    layout.scale = scale_of(file);
    layout.analog_rate = analog_rate_of(layout, candidates.analog_rate, notes);
    note_contradictions(file, layout, notes);
    return layout;
}

} // namespace c3d
