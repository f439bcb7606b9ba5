#pragma once

// Changes of metadata. Each call but clear ends with the fresh export of all metadata; a refused
// one changes nothing.

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

namespace mox::metadata {

/// Adds an entry, or makes an existing one anew, from `info`: a dictionary with "format" and
/// "values".
[[nodiscard]] py_ref append(strata::data_store acquisition, const std::string& group,
                            const std::string& entry, PyObject* info);

/// Makes an existing entry anew.
[[nodiscard]] py_ref set(strata::data_store acquisition, const std::string& group,
                         const std::string& entry, PyObject* info);

/// Replaces the values of an entry, whose shape and format stay.
[[nodiscard]] py_ref set_value(strata::data_store acquisition, const std::string& group,
                               const std::string& entry, PyObject* value);
[[nodiscard]] py_ref set_value_at(strata::data_store acquisition, const std::string& path,
                                  PyObject* value);

/// Converts an entry to another format.
[[nodiscard]] py_ref set_format(strata::data_store acquisition, const std::string& group,
                                const std::string& entry, const std::string& format);
[[nodiscard]] py_ref set_format_at(strata::data_store acquisition, const std::string& path,
                                   const std::string& format);

/// Gives an entry as many values, in one dimension, as the product of `dimensions`.
[[nodiscard]] py_ref set_dimensions(strata::data_store acquisition, const std::string& group,
                                    const std::string& entry, PyObject* dimensions);
[[nodiscard]] py_ref set_dimensions_at(strata::data_store acquisition, const std::string& path,
                                       PyObject* dimensions);

/// Changes nothing: entries carry no description that scripts see.
[[nodiscard]] py_ref set_description(strata::data_store acquisition, const std::string& group,
                                     const std::string& entry, const std::string& description);
[[nodiscard]] py_ref set_description_at(strata::data_store acquisition, const std::string& path,
                                        const std::string& description);

/// Deletes a group with all its entries, or one entry.
[[nodiscard]] py_ref remove_group(strata::data_store acquisition, const std::string& group);
[[nodiscard]] py_ref remove_entry(strata::data_store acquisition, const std::string& group,
                                  const std::string& entry);

/// Deletes every group; what the metadata carry outside of groups stays.
void clear(strata::data_store acquisition);

} // namespace mox::metadata
