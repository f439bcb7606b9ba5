#pragma once

#include <string_view>

#include <strata/data_attribute.hpp>

#include "plugins/c3d/parameters/kept_records.hpp"
#include "plugins/c3d/parameters/parameter_tree.hpp"

namespace c3d {

/// The values of a metadata attribute as a parameter of a file: type, extents and elements. The
/// shape is reversed; texts are as wide as `record` says, or wider where they have to be. A single
/// `int16` that was a byte in the file is one again.
///
/// Throws export_error when the format cannot hold it.
[[nodiscard]] written_parameter stored_attribute(const strata::data_attribute& attribute,
                                                 std::string_view group,
                                                 const kept_parameter& record);

} // namespace c3d
