#define MOX_BINDS_NUMPY
#include "store/python.hpp"

#include "module/numpy_binding.hpp"

namespace mox {

bool bind_numpy() noexcept {
    if (PyArray_ImportNumPyAPI() == 0) return true;
    PyErr_Print();
    PyErr_SetString(PyExc_ImportError, "numpy._core.multiarray failed to import");
    return false;
}

} // namespace mox
