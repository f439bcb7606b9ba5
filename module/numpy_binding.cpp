#define MOX_BINDS_NUMPY
#include "store/python.hpp"

#include "module/numpy_binding.hpp"

namespace mox {

bool bind_numpy() noexcept {
    // The checks run at every call: PyArray_ImportNumPyAPI takes a table that failed them once as
    // bound the next time.
    if (_import_array() >= 0)
        return true;
    PyErr_Print();
    PyErr_SetString(PyExc_ImportError, "numpy._core.multiarray failed to import");
    return false;
}

} // namespace mox
