#pragma once

// Metadata group by group and entry by entry, without an export of everything. Names are compared
// exactly, and each is one name: none with "/" in it is found. The content of an entry is an array
// in the order of the store's dimensions: numbers of the stored element type, or objects that are
// texts.

#include "store/python.hpp"

#include <optional>
#include <string>
#include <vector>

#include <strata/data_store.hpp>

namespace mox::metadata {

/// The names of all groups, in the order of the store.
[[nodiscard]] std::vector<std::string> group_names(strata::data_store acquisition);

/// The names of a group's entries; nothing when there is no such group.
[[nodiscard]] std::optional<std::vector<std::string>> entry_names(strata::data_store acquisition,
                                                                  const std::string& group);

/// Whether there is a group, or an entry in it.
[[nodiscard]] py_ref has_group(strata::data_store acquisition, const std::string& group);
[[nodiscard]] py_ref has_entry(strata::data_store acquisition, const std::string& group,
                               const std::string& entry);

/// Format name and content of an entry, texts as str; None when there is no such entry.
[[nodiscard]] py_ref entry_content(strata::data_store acquisition, const std::string& group,
                                   const std::string& entry);

/// Gives an entry this content, whose texts are bytes or str; creates what is missing. SystemError
/// for a single value that scripts could not read back. A failure changes nothing.
void set_entry_content(strata::data_store acquisition, const std::string& group,
                       const std::string& entry, PyObject* content);

/// Gives a group exactly these entries, a dictionary of contents; creates it when it is missing. A
/// content that is refused changes nothing.
void set_group_content(strata::data_store acquisition, const std::string& group,
                       PyObject* contents);

/// Deletes a group that exists, and an entry that exists.
void delete_group(strata::data_store acquisition, const std::string& group);
void delete_entry(strata::data_store acquisition, const std::string& group,
                  const std::string& entry);

} // namespace mox::metadata
