#pragma once

#include "store/python.hpp"

#include <strata/data_store.hpp>

namespace mox::images {

/// All of the acquisition as bytes, for pickles (strata/access/store_image.hpp). Other threads run
/// Python meanwhile.
[[nodiscard]] py_ref dump(strata::data_store acquisition);

/// The acquisition that `buffer`, an object that lends its bytes, is an image of. ValueError for
/// bytes that are none. Other threads run Python meanwhile.
[[nodiscard]] strata::data_store load(PyObject* buffer);

} // namespace mox::images
