#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "plugins/c3d/bytes/file_reader.hpp"
#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/header.hpp"
#include "plugins/c3d/parameters/parameter_table.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// Everything before the data section, as the file has it.
struct c3d_file {
    std::uint64_t size = 0;         ///< of the file
    std::uint64_t zeros_at_end = 0; ///< zero bytes at the end, as far as they can be padding
    std::uint64_t origin = 0;       ///< byte of the header; some files have zeros before it
    number_format format = number_format::intel;
    header_block block{}; ///< the header block itself
    header head;
    std::array<std::byte, section_head_bytes> section_head{};
    std::vector<std::byte> section;   ///< the parameter section, which the table refers to
    std::uint64_t parameters_end = 0; ///< byte behind the last parameter
    parameter_table parameters;
};

/// True when the content looks like a C3D file of points and analog samples. Throws import_error
/// when it cannot be read.
[[nodiscard]] bool looks_like_c3d(const file_reader& reader);

/// Reads header and parameters. Throws import_error for a file that is none of this format, or that
/// ends before its parameters.
[[nodiscard]] c3d_file open_c3d(const file_reader& reader, schema::warnings& notes);

} // namespace c3d
