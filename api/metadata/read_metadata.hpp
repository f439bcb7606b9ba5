// Functions of metadata.
//
// | file                |                                       |
// |---------------------|---------------------------------------|
// | read_metadata       | metadata as dictionaries              |
// | format_names        | what the types of entries are called  |
// | metadata_path       | the entry that a script names         |
// | info_record         | the new entry that a script describes |
// | modify_metadata     | entries that are new, other or gone   |
// | entries             | groups and entries, one by one        |
// | entry_record        | what a file says of an entry, too     |
// | analysis            | the group ANALYSIS                    |
// | data_set_dictionary | a set as a dictionary                 |

#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>
#include <strata/data_store.hpp>

namespace mox::metadata {

/// A group as nested dictionaries, and one entry of it.
[[nodiscard]] py_ref group_dictionary(const strata::data_group& group);
[[nodiscard]] py_ref entry_dictionary(const strata::data_attribute& entry);

/// All metadata, those of one group, and one entry. RuntimeError when there is no such group or
/// entry.
[[nodiscard]] py_ref all(strata::data_store acquisition);
[[nodiscard]] py_ref of_group(strata::data_store acquisition, const std::string& group);
[[nodiscard]] py_ref of_entry(strata::data_store acquisition, const std::string& group,
                              const std::string& entry);

} // namespace mox::metadata
