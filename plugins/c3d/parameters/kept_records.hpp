#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>

#include "plugins/c3d/parameters/metadata_names.hpp"
#include "plugins/c3d/parameters/parameter_table.hpp"

namespace c3d {

/// Keeps what `Format/Metadata` does not say about groups and parameters, so that they can be
/// written as they were. Two groups below `header` with array attributes, one element for each
/// record, in file order:
///
/// | group        | attribute     | type   | element                                        |
/// |--------------|---------------|--------|------------------------------------------------|
/// | `Groups`     | `Name`        | string | name as spelled in the file                    |
/// |              | `Stored`      | string | name of the group below `Format/Metadata`      |
/// |              | `Id`          | int16  | 1 to 127                                       |
/// |              | `Locked`      | int16  | 0 or 1                                         |
/// |              | `Description` | string |                                                |
/// | `Parameters` | `Group`       | int16  | index of its group in the arrays of `Groups`   |
/// |              | `Name`        | string | name as spelled in the file                    |
/// |              | `Stored`      | string | name of the attribute in that group            |
/// |              | `Type`        | int16  | −1 characters, 1 bytes, 2 integers, 4 reals    |
/// |              | `Width`       | int16  | characters of a text; 0 for numbers, −1 for a  |
/// |              |               |        | text without dimensions                        |
/// |              | `Encoding`    | int16  | 0 UTF-8, 1 where a text is Windows-1252        |
/// |              | `Locked`      | int16  | 0 or 1                                         |
/// |              | `Description` | string |                                                |
///
/// A group without a record of its own has the name of its store group. Parameters that a later one
/// of the same name replaced are left out.
void create_kept_records(strata::data_group& header, const parameter_table& table,
                         const metadata_names& names);

/// What is known of a group of the file that was read; see create_kept_records.
struct kept_group {
    std::string name;
    std::string stored; ///< name of the store's group
    std::uint8_t id = 0;
    bool locked = false;
    std::string description;
};

struct kept_parameter {
    std::string group;  ///< name of the store's group
    std::string name;   ///< as spelled in the file
    std::string stored; ///< name of the attribute
    int type = 0;       ///< code of the element type
    int width = 0;      ///< of a text; −1 without dimensions
    bool was_windows_1252 = false;
    bool locked = false;
    std::string description;
};

struct kept_records {
    std::vector<kept_group> groups;
    std::vector<kept_parameter> parameters;
};

/// The records that the importer kept in the group `Header` of `format`; none when the acquisition
/// was not read.
[[nodiscard]] kept_records read_kept_records(const strata::data_group& format);

} // namespace c3d
