#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>

namespace c3d {

/// What is known of a group of the file that was read; see create_parameter_records.
struct group_record_read {
    std::string name;
    std::string stored; ///< name of the store's group
    std::uint8_t id = 0;
    bool locked = false;
    std::string description;
};

struct parameter_record_read {
    std::string group;  ///< name of the store's group
    std::string name;   ///< as spelled in the file
    std::string stored; ///< name of the attribute
    int type = 0;       ///< code of the element type
    int width = 0;      ///< of a text; −1 without dimensions
    bool was_windows_1252 = false;
    bool locked = false;
    std::string description;
};

struct records_read {
    std::vector<group_record_read> groups;
    std::vector<parameter_record_read> parameters;
};

/// The records that the importer kept in the group `Header` of `format`; none when the acquisition
/// was not read.
[[nodiscard]] records_read read_parameter_records(const strata::data_group& format);

} // namespace c3d
