#include "store/python.hpp"

#include "acquisition/files/os_failure.hpp"

#include "store/python_read.hpp"

namespace mox {

void throw_os_failure(const std::error_code& reason, const std::string& path) {
    // For reasons that name a detail, too, the number that Python knows.
    const auto number = reason.default_error_condition().value();
    const auto text = text_to_python(reason.message());
    const auto name = py_ref::checked(
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size())));
    const auto failure = py_ref::checked(
        PyObject_CallFunction(PyExc_OSError, "iOO", number, text.get(), name.get()));
    PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(failure.get())), failure.get());
    throw python_error{};
}

} // namespace mox
