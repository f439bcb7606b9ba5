#pragma once

#include "store/python.hpp"

#include <string>
#include <string_view>

#include <strata/data_attribute.hpp>
#include <strata/data_selection.hpp>
#include <strata/data_set.hpp>

namespace mox {

/// How arrays read from the store are arranged.
struct array_form {
    bool transpose = false; ///< reverse the order of the dimensions, after squeezing
    bool squeeze = false;   ///< remove dimensions of extent 1
};

/// The stored value as a Python object: one number as float, int or bool; more as an array of the
/// stored element type that the caller owns; texts with dimensions as a list of as many texts as
/// the first dimension; one text as str. SystemError for a type that has no Python form,
/// RuntimeError for an invalid one. Reading failures are logged, not raised.
[[nodiscard]] py_ref read_as_python(const strata::data_attribute& attribute, array_form form);
[[nodiscard]] py_ref read_as_python(const strata::data_selection& selection, array_form form);
[[nodiscard]] py_ref read_as_python(const strata::data_set& set, array_form form);

/// The attribute's single value as a Python object.
[[nodiscard]] py_ref read_scalar_as_python(const strata::data_attribute& attribute);

/// Fills `array`, C-ordered and of native byte order, from a selection of as many elements; false,
/// with a line in the log, on failure.
bool read_into_array(const strata::data_selection& selection, PyArrayObject* array);

/// UTF-8 as str; bytes that are none are kept by "surrogateescape". Throws python_error.
[[nodiscard]] py_ref text_to_python(std::string_view text);

} // namespace mox
