#include "store/python.hpp"

#include "acquisition/files/write_acquisition.hpp"

#include <algorithm>
#include <cctype>

#include <anvil/io_file.hpp>
#include <anvil/path_text.hpp>
#include <fmt/format.h>
#include <strata/data_exporter.hpp>

#include "acquisition/files/file_argument.hpp"
#include "acquisition/platforms/force_platforms.hpp"
#include "acquisition/time_base/sample_agreement.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::writing {

namespace {

/// From the last dot on. A name that is nothing but its extension counts as one that has it.
std::string extension_of(const std::filesystem::path& path) {
    const auto name = anvil::text_of_path(path.filename());
    const auto dot = name.rfind('.');
    if (name == "." || name == ".." || dot == std::string::npos)
        return {};
    return name.substr(dot);
}

/// True when the last component of `path` ends in ".c3d", in capitals or not.
bool has_c3d_extension(const std::filesystem::path& path) {
    auto extension = extension_of(path);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension == ".c3d";
}

/// `path` from the root of the file system on; `path` itself when there is no current directory.
std::filesystem::path absolute_path(const std::filesystem::path& path) {
    std::error_code failure;
    auto absolute = std::filesystem::absolute(path, failure);
    return failure ? path : absolute;
}

anvil::status export_to(const std::filesystem::path& path, const strata::data_group& root) {
    anvil::io_file file;
    // The system would take a name with NUL for the part before it.
    if (path.native().find('\0') == std::filesystem::path::string_type::npos)
        file.open(path, anvil::io_write);
    if (!file.is_open()) {
        throw_runtime_error(fmt::format("Export to c3d failed, could not create file at: {}",
                                        anvil::text_of_path(path)));
    }
    auto status = strata::data_exporter(&file, "org.c3d.c3d").write(root);
    file.close();
    return status;
}

} // namespace

void write_acquisition(strata::data_store acquisition, PyObject* path) {
    const auto file_path = anvil::path_from_text(path_argument(path));
    if (!has_c3d_extension(file_path))
        throw_runtime_error("The only supported export format is c3d.");
    if (sampling::point_frequency(acquisition) == 0.0)
        throw_runtime_error("Frequency is not set, impossible to export to c3d");
    require_sample_agreement(acquisition);

    const auto root = acquisition.root();
    (void)bring_platforms_up_to_date(root);
    const auto status = export_to(absolute_path(file_path), root);
    if (root.exists_group(schema::metadata)) {
        auto metadata = root.retrieve_group(schema::metadata);
        if (!metadata.exists_attribute(schema::attribute::device_type))
            write_or_create(metadata, schema::attribute::device_type,
                            std::string(schema::device::metadata));
    }
    if (!status)
        throw_failure(status, "Export to c3d failed : ");
}

} // namespace mox::writing
