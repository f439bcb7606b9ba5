#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

namespace mox::metadata {

/// What the file that was read says of a metadata group, or of an entry in it, besides the values,
/// and what a file that is written says again: description and whether it is locked. An empty entry
/// means the group. "" and False where no file said anything.
[[nodiscard]] py_ref entry_record(strata::data_store acquisition, const std::string& group,
                                  const std::string& entry);

} // namespace mox::metadata
