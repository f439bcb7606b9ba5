#include "store/python.hpp"

#include "acquisition/files/read_acquisition.hpp"

#include <utility>

#include <anvil/io_file.hpp>
#include <anvil/path_text.hpp>
#include <fmt/format.h>

#include "acquisition/files/canonical_path.hpp"
#include "acquisition/files/file_argument.hpp"
#include "acquisition/files/import_acquisition.hpp"
#include "acquisition/files/open_failure.hpp"
#include "store/interpreter_release.hpp"

namespace mox::reading {

strata::data_store read_acquisition(PyObject* path) {
    const auto name = path_argument(path);
    const interpreter_release released;
    anvil::io_file file;
    file.open(canonical_path(name), anvil::io_read);
    if (!file.is_open())
        throw_open_failure(fmt::format("Impossible to open in read mode the file '{}'", name),
                           file.failure());

    auto [accepted, status, acquisition] = import_acquisition(file, anvil::path_from_text(name));
    if (!status)
        throw_failure(status);
    return std::move(acquisition);
}

} // namespace mox::reading
