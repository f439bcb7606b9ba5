#include "store/python.hpp"

#include "acquisition/files/os_failure.hpp"

namespace mox {

void throw_os_failure(const std::error_code& reason, const std::string& path) {
    // On every system, and for reasons that name a detail, the number that Python knows.
    const auto number = reason.default_error_condition().value();
    const auto text = reason.message();
    const auto name = py_ref::checked(
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size())));
    const auto failure = py_ref::checked(
        PyObject_CallFunction(PyExc_OSError, "isO", number, text.c_str(), name.get()));
    PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(failure.get())), failure.get());
    throw python_error{};
}

} // namespace mox
