#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "plugins/c3d/parameters/parameter_table.hpp"

namespace c3d {

/// Names under which groups and parameters stand below `Format/Metadata`.
///
/// The spelling of the file, with "/" and "\" replaced by "_". Groups and parameters that the
/// format itself defines are spelled as it does (upper case), so that everybody finds them. Groups
/// that share a name share a store group; names that only become equal on the way here get "_2",
/// "_3" and so on.
struct metadata_names {
    std::vector<std::string> groups;     ///< by group of the table
    std::vector<std::string> parameters; ///< by parameter of the table; empty for those that a
                                         ///< later one of the name replaces
};

[[nodiscard]] metadata_names metadata_names_of(const parameter_table& table);

} // namespace c3d
