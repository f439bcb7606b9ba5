#include "store/python.hpp"

#include "acquisition/files/read_acquisition.hpp"

#include <anvil/io_file.hpp>
#include <fmt/format.h>
#include <strata/data_importer.hpp>

#include "acquisition/files/canonical_path.hpp"
#include "acquisition/files/file_argument.hpp"
#include "acquisition/files/post_import.hpp"
#include "store/swig_error.hpp"

namespace mox::reading {

strata::data_store read_acquisition(PyObject* path) {
    const auto name = path_argument(path);
    anvil::io_file file;
    file.open(canonical_path(name), anvil::io_read);
    if (!file.is_open())
        throw_runtime_error(fmt::format("Impossible to open in read mode the file '{}'", name));

    strata::data_store acquisition;
    const auto status = strata::data_importer(&file, "").read(acquisition.root());
    if (!status)
        throw_failure(status);
    file.close();
    shape_imported_layout(acquisition.root());
    return acquisition;
}

} // namespace mox::reading
