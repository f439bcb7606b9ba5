#include "plugins/c3d/samples/read_samples.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>

namespace c3d {

namespace {

/// Stays in the second-level cache while it is decoded, together with the lines that are written.
constexpr std::uint64_t cached_bytes = std::uint64_t{256} * 1024;

/// Records of one size that lie one behind the other in the file, read a block at a time.
class record_blocks {
  public:
    record_blocks(const file_reader& reader, std::uint64_t offset, std::uint64_t record_bytes,
                  std::uint64_t records)
        : reader_(reader), offset_(offset), record_bytes_(record_bytes), records_(records) {
        // Whole tiles in every block but the last, also of records larger than the cache.
        const auto wanted =
            std::max<std::uint64_t>(cached_bytes / record_bytes / tile * tile, tile);
        block_records_ = std::min(wanted, records);
        bytes_ = std::make_unique_for_overwrite<std::byte[]>(
            static_cast<std::size_t>(block_records_ * record_bytes));
    }

    [[nodiscard]] std::size_t block_records() const noexcept {
        return static_cast<std::size_t>(block_records_);
    }
    [[nodiscard]] const std::byte* data() const noexcept { return bytes_.get(); }

    /// Calls `use(first record, number of records)` for each block, whose bytes are at data().
    template <typename Use> void for_each(Use use) {
        for (std::uint64_t first = 0; first < records_; first += block_records_) {
            const auto count = std::min(block_records_, records_ - first);
            const auto bytes = static_cast<std::size_t>(count * record_bytes_);
            reader_.read_exactly(offset_ + first * record_bytes_, {bytes_.get(), bytes});
            use(static_cast<std::size_t>(first), static_cast<std::size_t>(count));
        }
    }

  private:
    static constexpr std::uint64_t tile = 4;

    const file_reader& reader_;
    std::uint64_t offset_;
    std::uint64_t record_bytes_;
    std::uint64_t records_;
    std::uint64_t block_records_ = 0;
    std::unique_ptr<std::byte[]> bytes_;
};

/// Where the analog rows of a block of frames begin: sub-samples within frames.
std::vector<const std::byte*> analog_rows(const frame_layout& layout, const record_blocks& blocks) {
    std::vector<const std::byte*> rows;
    rows.reserve(blocks.block_records() * static_cast<std::size_t>(layout.samples_per_frame));
    for (std::size_t frame = 0; frame < blocks.block_records(); ++frame) {
        const auto* row = blocks.data() + frame * layout.frame_bytes() + layout.point_bytes();
        for (std::uint64_t sample = 0; sample < layout.samples_per_frame; ++sample) {
            rows.push_back(row);
            row += layout.analog_row_bytes();
        }
    }
    return rows;
}

} // namespace

bool read_samples(const file_reader& reader, const frame_layout& layout, const decoder& kernels,
                  residual_rule rule, const sample_targets& targets) {
    const bool is_wanted = !targets.points.empty() || !targets.channels.empty();
    if (!is_wanted || layout.frames == 0 || layout.frame_bytes() == 0)
        return false;
    record_blocks blocks(reader, layout.data_offset, layout.frame_bytes(), layout.frames);
    // Every block lies in the same memory, so its rows are the same, too.
    std::vector<const std::byte*> rows;
    if (!targets.channels.empty())
        rows = analog_rows(layout, blocks);
    const auto samples = static_cast<std::size_t>(layout.samples_per_frame);
    bool found = false;
    blocks.for_each([&](std::size_t first, std::size_t count) {
        const point_block points{blocks.data(), static_cast<std::size_t>(layout.frame_bytes()),
                                 count, first, static_cast<std::size_t>(layout.frames)};
        if (!targets.points.empty() && kernels.points(points, targets.points, rule))
            found = true;
        if (!targets.channels.empty()) {
            kernels.columns({std::span(rows).first(count * samples), first * samples},
                            targets.channels);
        }
    });
    return found;
}

void read_rows(const file_reader& reader, const row_section& section, const decoder& kernels,
               std::span<float* const> columns) {
    if (section.rows == 0 || columns.empty())
        return;
    record_blocks blocks(reader, section.offset, section.row_bytes, section.rows);
    std::vector<const std::byte*> rows(blocks.block_records());
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = blocks.data() + i * section.row_bytes;
    blocks.for_each([&](std::size_t first, std::size_t count) {
        kernels.columns({std::span(rows).first(count), first}, columns);
    });
}

} // namespace c3d
