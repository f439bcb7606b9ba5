#include "store/python.hpp"

#include "acquisition/file_argument.hpp"

#include "store/swig_error.hpp"

namespace mox {

std::string path_text(PyObject* path) {
    if (!PyUnicode_Check(path)) {
        throw swig_error(error_code::type,
                         "Invalid call! The given path is not a str, maybe try to explicitly "
                         "convert your object to one.");
    }
    const auto bytes = py_ref::checked(PyUnicode_EncodeFSDefault(path));
    return {PyBytes_AS_STRING(bytes.get()),
            static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.get()))};
}

std::string failure_text(const anvil::status& status) { return status.message("\n\t - "); }

} // namespace mox
