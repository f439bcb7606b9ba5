#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "plugins/c3d/bytes/file_writer.hpp"
#include "plugins/c3d/parameters/written_form.hpp"
#include "plugins/c3d/samples/sample_source.hpp"

namespace c3d {

/// The samples of one point: x, y and z, and the fourth words where there are any.
struct point_source {
    std::string name; ///< for messages
    std::array<sample_source, 3> coordinates;
    std::optional<sample_source> words;
};

/// Throws export_error for the first of `singles`, computed for a coordinate of the point from
/// frame `first` on, that is infinite although the coordinate is not.
void require_singles(const point_source& point, const sample_source& coordinate, std::size_t first,
                     std::span<const float> singles);

/// The fourth words with the byte of the residual multiplied by `factor`, at most 255; that of the
/// cameras stays.
void rescale_residuals(std::span<const float> words, double factor, float* to) noexcept;

/// All frames of a data section.
struct frame_sources {
    std::uint64_t frames = 0;
    std::uint64_t samples_per_frame = 1;
    std::vector<point_source> points;
    std::vector<sample_source> channels;
    written_form form;
    double residual_factor = 1.0; ///< what residuals are multiplied by; 1 leaves all words alone

    [[nodiscard]] std::size_t frame_bytes() const noexcept {
        return form.sample_bytes() *
               (4 * points.size() + channels.size() * static_cast<std::size_t>(samples_per_frame));
    }
};

/// Writes the frames in their form. They are assembled in blocks that stay in the processor's
/// cache; no more than one is in memory at a time. The last block of the file is not padded. Throws
/// export_error for a finite coordinate that no real holds.
void write_frames(file_writer& target, const frame_sources& sources);

/// Writes rows with a real of each column.
void write_rows(file_writer& target, std::span<const sample_source> columns, std::uint64_t rows,
                number_format format);

} // namespace c3d
