#include "store/python.hpp"

#include "acquisition/files/file_argument.hpp"

#include "store/swig_error.hpp"

namespace mox {

namespace {

std::string text_of(const py_ref& bytes) {
    return {PyBytes_AS_STRING(bytes.get()),
            static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.get()))};
}

} // namespace

std::string path_argument(PyObject* path) {
    if (!PyUnicode_Check(path)) {
        throw swig_error(error_code::type,
                         "Invalid call! The given path is not a str, maybe try to explicitly "
                         "convert your object to one.");
    }
    return text_of(py_ref::checked(PyUnicode_EncodeFSDefault(path)));
}

std::string bytes_of_path(PyObject* path) {
    PyObject* converted = nullptr;
    if (PyUnicode_FSConverter(path, &converted) == 0)
        throw python_error{};
    return text_of(py_ref::steal(converted));
}

void throw_failure(const anvil::status& status, const std::string& introduction) {
    const auto code = status.is_out_of_memory() ? error_code::memory : error_code::runtime;
    throw swig_error(code, introduction + status.message("\n\t - "));
}

} // namespace mox
