#pragma once

#include <cstdint>

#include <strata/data_group.hpp>

#include "plugins/c3d/parameters/metadata_names.hpp"
#include "plugins/c3d/parameters/parameter_table.hpp"

namespace c3d {

/// Creates the group `Metadata` of `format`: a group for each group of the file, an attribute for
/// each parameter.
///
/// Character parameters become texts, bytes `int8`, integers `int16`, reals `float32`. Shapes are
/// the dimensions in reverse, the fastest varying last; texts lose their first dimension, the
/// width. A single byte becomes an `int16`. `file_bytes` bounds how many texts without a width are
/// believed.
void create_metadata(strata::data_group& format, const parameter_table& table,
                     const metadata_names& names, std::uint64_t file_bytes,
                     schema::warnings& notes);

} // namespace c3d
