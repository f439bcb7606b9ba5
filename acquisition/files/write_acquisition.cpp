#include "store/python.hpp"

#include "acquisition/files/write_acquisition.hpp"

#include <anvil/io_file.hpp>
#include <anvil/path_text.hpp>
#include <fmt/format.h>

#include "acquisition/files/export_acquisition.hpp"
#include "acquisition/files/file_argument.hpp"
#include "acquisition/files/open_failure.hpp"
#include "store/swig_error.hpp"

namespace mox::writing {

namespace {

anvil::status export_to_file(const std::filesystem::path& path, const strata::data_group& root) {
    anvil::io_file file;
    // The system would take a name with NUL for the part before it.
    const bool has_nul = path.native().find('\0') != std::filesystem::path::string_type::npos;
    if (!has_nul)
        file.open(path, anvil::io_write);
    if (!file.is_open()) {
        throw_open_failure(fmt::format("Export to c3d failed, could not create file at: {}",
                                       anvil::text_of_path(path)),
                           has_nul ? std::make_error_code(std::errc::invalid_argument)
                                   : file.failure());
    }
    return export_to(file, root);
}

} // namespace

void write_acquisition(strata::data_store acquisition, PyObject* path) {
    const auto file_path = anvil::path_from_text(path_argument(path));
    if (!has_c3d_extension(file_path))
        throw_runtime_error("The only supported export format is c3d.");
    prepare_export(acquisition);
    const auto root = acquisition.root();
    const auto status = export_to_file(absolute_path(file_path), root);
    mark_metadata(root);
    if (!status)
        throw_failure(status, "Export to c3d failed : ");
}

} // namespace mox::writing
