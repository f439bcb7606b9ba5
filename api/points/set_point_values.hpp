#pragma once

// Values of points from matrices: a row a frame, three columns a point.

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

namespace mox::points {

/// Values of all markers; also what setting the angles' values does, which scripts rely on.
void set_markers_values(strata::data_store acquisition, PyObject* matrix);
void set_forces_values(strata::data_store acquisition, PyObject* matrix);
void set_moments_values(strata::data_store acquisition, PyObject* matrix);
void set_powers_values(strata::data_store acquisition, PyObject* matrix);

/// Values of all points of all types; the three columns of a point stand where its index says.
void set_all_values(strata::data_store acquisition, PyObject* matrix);

/// Values of one point.
void set_values_by_index(strata::data_store acquisition, int index, PyObject* matrix);
void set_values_by_label(strata::data_store acquisition, const std::string& label,
                         PyObject* matrix);

} // namespace mox::points
