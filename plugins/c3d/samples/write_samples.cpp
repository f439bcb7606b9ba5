#include "plugins/c3d/samples/write_samples.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/samples/encoder.hpp"

namespace c3d {

namespace {

/// Large enough for few calls of the device, small enough for the second-level cache.
constexpr std::size_t block_size = std::size_t{256} * 1024;

/// Rows whose cache lines stay in the first-level cache from one tile of columns to the next, which
/// writes the same lines.
constexpr std::size_t most_scratch_rows = 128;

std::size_t records_in_block(std::size_t record_bytes, std::uint64_t records) {
    constexpr std::size_t tile = 4;
    const auto wanted = (block_size / record_bytes / tile + 1) * tile;
    return static_cast<std::size_t>(std::min<std::uint64_t>(wanted, records));
}

/// Columns that become rows of numbers, wherever the rows lie.
class column_encoder {
  public:
    column_encoder(std::span<const sample_source> columns, written_form form, std::size_t most_rows)
        : columns_(columns), encoder_(encoder_for(form.format, form.storage)),
          sample_bytes_(form.sample_bytes()) {
        scratch_rows_ = std::min(most_rows, most_scratch_rows);
        scratch_.resize(4 * scratch_rows_);
    }

    /// Samples from `first` on, one for each row.
    void encode(std::size_t first, std::span<std::byte* const> rows) {
        for (std::size_t row = 0; row < rows.size(); row += scratch_rows_) {
            const auto count = std::min(scratch_rows_, rows.size() - row);
            encode_rows(first + row, rows.subspan(row, count));
        }
    }

  private:
    void encode_rows(std::size_t first, std::span<std::byte* const> rows) {
        for (std::size_t column = 0; column < columns_.size(); column += 4) {
            column_run run{{}, std::min<std::size_t>(4, columns_.size() - column)};
            for (std::size_t i = 0; i < run.count; ++i) {
                run.columns[i] = columns_[column + i].singles(first, rows.size(),
                                                              scratch_.data() + i * scratch_rows_);
            }
            encoder_.columns(run, rows, sample_bytes_ * column);
        }
    }

    std::span<const sample_source> columns_;
    encoder encoder_;
    std::size_t sample_bytes_;
    std::size_t scratch_rows_;
    std::vector<float> scratch_; // for four columns
};

/// Points that become records, a frame behind the other.
class point_encoder {
  public:
    point_encoder(const frame_sources& sources, std::size_t most_frames)
        : points_(sources.points), residual_factor_(sources.residual_factor),
          encoder_(encoder_for(sources.form.format, sources.form.storage)),
          record_bytes_(4 * sources.form.sample_bytes()), scratch_frames_(most_frames),
          scratch_(4 * most_frames), no_words_(most_frames) {}

    void encode(std::size_t first, std::size_t frames, std::byte* to, std::size_t frame_bytes) {
        for (const auto& point : points_) {
            const auto column = [&](const sample_source& source, std::size_t index) {
                auto* scratch = scratch_.data() + index * scratch_frames_;
                const auto* singles = source.singles(first, frames, scratch);
                if (singles == scratch)
                    require_singles(point, source, first, {singles, frames});
                return singles;
            };
            const auto& [x, y, z] = point.coordinates;
            const auto* words = point.words ? column(*point.words, 3) : no_words_.data();
            if (point.words && residual_factor_ != 1.0) {
                auto* const rescaled = scratch_.data() + 3 * scratch_frames_;
                rescale_residuals({words, frames}, residual_factor_, rescaled);
                words = rescaled;
            }
            encoder_.points({{column(x, 0), column(y, 1), column(z, 2)}, words, frames}, to,
                            frame_bytes);
            to += record_bytes_;
        }
    }

  private:
    std::span<const point_source> points_;
    double residual_factor_;
    encoder encoder_;
    std::size_t record_bytes_;
    std::size_t scratch_frames_;
    std::vector<float> scratch_;  // for three coordinates and the fourth words
    std::vector<float> no_words_; // zeros
};

} // namespace

void require_singles(const point_source& point, const sample_source& coordinate, std::size_t first,
                     std::span<const float> singles) {
    // A coordinate must not become invalid because it is too large.
    if (const auto at = coordinate.first_overflow(first, singles)) {
        throw export_error("the point '{}' has a coordinate in frame {} that is too large for "
                           "a C3D file, which holds numbers up to 3.4e38",
                           point.name, first + *at + 1);
    }
}

void rescale_residuals(std::span<const float> words, double factor, float* to) noexcept {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!(words[i] >= 0.0F && words[i] < 32768.0F)) { // of no valid sample
            to[i] = words[i];
            continue;
        }
        const auto cameras = std::floor(words[i] / 256.0F);
        const auto residual = static_cast<double>(words[i] - 256.0F * cameras);
        to[i] =
            256.0F * cameras + static_cast<float>(std::min(std::round(residual * factor), 255.0));
    }
}

void write_frames(file_writer& target, const frame_sources& sources) {
    const auto frame_bytes = sources.frame_bytes();
    if (frame_bytes == 0 || sources.frames == 0)
        return;
    const auto block_frames = records_in_block(frame_bytes, sources.frames);
    const auto samples = static_cast<std::size_t>(sources.samples_per_frame);
    const auto sample_bytes = sources.form.sample_bytes();
    const auto block = std::make_unique_for_overwrite<std::byte[]>(block_frames * frame_bytes);
    // Every block is assembled in the same memory, so its rows are the same, too.
    std::vector<std::byte*> rows;
    if (!sources.channels.empty()) {
        for (std::size_t frame = 0; frame < block_frames; ++frame) {
            auto* row =
                block.get() + frame * frame_bytes + 4 * sample_bytes * sources.points.size();
            for (std::size_t i = 0; i < samples; ++i)
                rows.push_back(row + i * sample_bytes * sources.channels.size());
        }
    }
    point_encoder points(sources, block_frames);
    column_encoder channels(sources.channels, sources.form, rows.size());
    for (std::uint64_t done = 0; done < sources.frames; done += block_frames) {
        const auto first = static_cast<std::size_t>(done);
        const auto frames =
            static_cast<std::size_t>(std::min<std::uint64_t>(block_frames, sources.frames - done));
        points.encode(first, frames, block.get(), frame_bytes);
        if (!rows.empty())
            channels.encode(first * samples, std::span(rows).first(frames * samples));
        target.write({block.get(), frames * frame_bytes});
    }
}

void write_rows(file_writer& target, std::span<const sample_source> columns, std::uint64_t rows,
                number_format format) {
    const auto row_bytes = 4 * columns.size();
    if (row_bytes == 0 || rows == 0)
        return;
    const auto block_rows = records_in_block(row_bytes, rows);
    const auto block = std::make_unique_for_overwrite<std::byte[]>(block_rows * row_bytes);
    std::vector<std::byte*> places;
    places.reserve(block_rows);
    for (std::size_t i = 0; i < block_rows; ++i)
        places.push_back(block.get() + i * row_bytes);
    column_encoder encoder(columns, {format, sample_storage::real}, block_rows);
    for (std::uint64_t done = 0; done < rows; done += block_rows) {
        const auto count =
            static_cast<std::size_t>(std::min<std::uint64_t>(block_rows, rows - done));
        encoder.encode(static_cast<std::size_t>(done), std::span(places).first(count));
        target.write({block.get(), count * row_bytes});
    }
}

} // namespace c3d
