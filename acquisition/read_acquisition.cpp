#include "store/python.hpp"

#include "acquisition/read_acquisition.hpp"

#include <anvil/io_file.hpp>
#include <fmt/format.h>
#include <strata/data_importer.hpp>

#include "acquisition/canonical_path.hpp"
#include "acquisition/post_import.hpp"
#include "store/swig_error.hpp"

namespace mox::reading {

namespace {

/// Joins the messages of a status: each on a line of its own behind a tab and a dash.
constexpr char message_separator[] = "\n\t - ";

} // namespace

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

strata::data_store read_acquisition(PyObject* path) {
    const auto name = path_text(path);
    anvil::io_file file;
    file.open(canonical_path(name), anvil::io_read);
    if (!file.is_open())
        throw_runtime_error(fmt::format("Impossible to open in read mode the file '{}'", name));

    strata::data_store acquisition;
    const auto status = strata::data_importer(&file, "").read(acquisition.root());
    if (!status)
        throw_runtime_error(status.message(message_separator));
    file.close();
    shape_imported_layout(acquisition.root());
    return acquisition;
}

} // namespace mox::reading
