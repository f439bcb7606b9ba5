#include "plugins/c3d/frames/rotation_layout.hpp"

#include <algorithm>
#include <cmath>

#include "plugins/c3d/bytes/format_limits.hpp"

namespace c3d {

namespace {

/// ROTATION:DATA_START; some writers keep only its low byte, which then points before the end of
/// the data.
std::uint64_t rotation_offset(const c3d_file& file, const frame_layout& frames, std::uint64_t bytes,
                              schema::warnings& notes) {
    const auto data_end = frames.data_offset + frames.frames * frames.frame_bytes();
    const auto behind_data =
        file.origin + (data_end - file.origin + block_bytes - 1) / block_bytes * block_bytes;
    const auto block = file.parameters.count("ROTATION", "DATA_START").value_or(0);
    const bool has_data = frames.frame_bytes() != 0 && frames.frames != 0;
    const auto offset = block == 0 ? 0 : block_offset(file.origin, block);
    if (offset >= (has_data ? data_end : file.parameters_end))
        return offset;
    // Behind long samples, blocks have no number: some rotations come first.
    if (offset >= file.parameters_end && bytes != 0 && offset + bytes <= frames.data_offset)
        return offset;
    notes.add("ROTATION:DATA_START is block {}, which is taken by other data; the rotations are "
              "read from byte {}",
              block, behind_data);
    return behind_data;
}

std::uint64_t ratio_of(const c3d_file& file, double rate, double point_rate) {
    if (const auto ratio = file.parameters.count("ROTATION", "RATIO");
        ratio && *ratio > 0 && *ratio <= largest_word) {
        return *ratio;
    }
    // Without RATIO it is that of the rates, where they give one that RATIO could hold.
    if (rate > 0.0 && point_rate > 0.0 && rate / point_rate >= 0.5 && rate / point_rate < 65535.0) {
        return static_cast<std::uint64_t>(std::llround(rate / point_rate));
    }
    return 1;
}

} // namespace

std::optional<rotation_layout> decide_rotations(const c3d_file& file, const frame_layout& frames,
                                                schema::warnings& notes) {
    const auto segments = file.parameters.count("ROTATION", "USED").value_or(0);
    if (segments == 0)
        return std::nullopt;
    rotation_layout result;
    result.segments = segments;
    const auto stored_rate = file.parameters.number("ROTATION", "RATE").value_or(0.0);
    const bool has_rate = std::isfinite(stored_rate) && stored_rate > 0.0;
    result.ratio = ratio_of(file, has_rate ? stored_rate : 0.0, frames.point_rate);
    result.rate = has_rate ? stored_rate : static_cast<double>(result.ratio) * frames.point_rate;
    // No file is so long that as many rows as this could be in it.
    constexpr std::uint64_t most_rows = std::uint64_t{1} << 40U;
    const auto announced = std::min(frames.frames * result.ratio, most_rows);
    // More segments than a word counts are a lie, and their bytes would be beyond 64 bits.
    const auto bytes = segments > 65535 ? 0 : announced * result.row_bytes();
    result.offset = rotation_offset(file, frames, bytes, notes);

    const auto room = result.offset < file.size ? file.size - result.offset : 0;
    const auto most = segments > room ? 0 : room / result.row_bytes();
    const auto wanted = frames.frames != 0 ? frames.frames * result.ratio : most;
    result.rows = std::min(wanted, most);
    if (wanted > most) {
        notes.add(
            "byte {}: {} rotations of {} segments expected, the file holds {}; these are read",
            result.offset, wanted, segments, most);
    }
    // More rows in a frame than the file has rows are believed where all that are announced take no
    // more than the file's length, else not: every frame would get them.
    if (bytes == 0 || bytes > file.size)
        result.ratio = std::min(result.ratio, result.rows);
    return result.rows == 0 ? std::nullopt : std::optional(result);
}

std::uint64_t frames_with_rotations(const c3d_file& file, const frame_layout& frames) {
    schema::warnings none;
    const auto rotations = decide_rotations(file, frames, none);
    return rotations ? (rotations->rows + rotations->ratio - 1) / rotations->ratio : 0;
}

} // namespace c3d
