#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>

namespace c3d {

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
