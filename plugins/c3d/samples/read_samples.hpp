// Samples on their way between a file and the channels; no more than a block at a time.
//
// | file             |                                                         |
// |------------------|---------------------------------------------------------|
// | read_samples     | a data section, block by block, becomes the channels    |
// | decoder          | the loops that do it, for one kind of data section      |
// | decode_kernels   | how they are written, once for all processors           |
// | write_samples    | channels become a data section, block by block          |
// | sample_source    | the singles that a file holds for a channel             |
// | sample_survey    | what those are like, for whoever has to hold them       |
// | encoder          | the loops that write them                               |
// | encode_kernels   | how they are written, once for all processors           |
// | lanes_portable   | four singles at once, on any processor                  |
// | lanes_sse2       | the same on x86-64                                      |
// | kernels_portable | the loops over the portable lanes                       |
// | kernels_sse2     | or over those of x86-64; the build takes one of the two |
// | buffer_elements  | the elements of a buffer where they lie                 |

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "plugins/c3d/bytes/file_reader.hpp"
#include "plugins/c3d/frames/frame_layout.hpp"
#include "plugins/c3d/samples/decoder.hpp"

namespace c3d {

/// Where the samples of a data section go; an empty side is skipped.
struct sample_targets {
    std::span<const point_target> points; ///< of the first points of a frame
    std::span<float* const> channels;     ///< the first sample of each analog channel
};

/// Reads all frames of `layout` and decodes them into the targets, block by block: the file is read
/// once, not at all without targets, and no more of it is in memory than fits a processor's cache.
/// True when a point has a valid sample (see decoder::points).
bool read_samples(const file_reader& reader, const frame_layout& layout, const decoder& kernels,
                  residual_rule rule, const sample_targets& targets);

/// Rows of reals that lie one behind the other, a column for each target.
struct row_section {
    std::uint64_t offset = 0; ///< of the first row in the file
    std::uint64_t row_bytes = 0;
    std::uint64_t rows = 0;
};

/// Reads and decodes a section that consists of columns only.
void read_rows(const file_reader& reader, const row_section& section, const decoder& kernels,
               std::span<float* const> columns);

} // namespace c3d
