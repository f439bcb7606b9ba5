#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_type.hpp>

namespace mox::metadata {

/// What an info dictionary says of a new entry.
struct new_entry {
    std::string format; ///< one of the four format names
    py_ref values;
};

/// The content of an info dictionary. RuntimeError for one without a known "format" or without
/// "values", TypeError for content that JSON does not know; what an entry of the format cannot hold
/// is refused too.
[[nodiscard]] new_entry checked_info(PyObject* info);

/// RuntimeError when text is given for an entry of numbers or numbers for one of text.
void require_same_kind(strata::data_type stored, strata::data_type given);

/// {"format": format, "values": values, "numdims": number of dimensions}. RuntimeError when fewer
/// dimensions are given than the values have.
[[nodiscard]] py_ref info_record(const std::string& format, PyObject* values);
[[nodiscard]] py_ref info_record_of_dimensions(const std::string& format, PyObject* values,
                                               int dimensions);

} // namespace mox::metadata
