#include "acquisition/files/export_acquisition.hpp"

#include <algorithm>
#include <cctype>
#include <string>

#include <anvil/path_text.hpp>
#include <strata/data_exporter.hpp>

#include "acquisition/files/unread_parts.hpp"
#include "acquisition/platforms/force_platforms.hpp"
#include "acquisition/time_base/sample_agreement.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "schema/names.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

/// From the last dot on. A name that is nothing but its extension counts as one that has it.
std::string extension_of(const std::filesystem::path& path) {
    const auto name = anvil::text_of_path(path.filename());
    const auto dot = name.rfind('.');
    if (name == "." || name == ".." || dot == std::string::npos)
        return {};
    return name.substr(dot);
}

} // namespace

bool has_c3d_extension(const std::filesystem::path& path) {
    auto extension = extension_of(path);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension == ".c3d";
}

std::filesystem::path absolute_path(const std::filesystem::path& path) {
    std::error_code failure;
    auto absolute = std::filesystem::absolute(path, failure);
    return failure ? path : absolute.make_preferred();
}

void prepare_export(strata::data_store acquisition) {
    require_complete(acquisition.root());
    if (sampling::point_frequency(acquisition) == 0.0)
        throw_runtime_error("Frequency is not set, impossible to export to c3d");
    require_sample_agreement(acquisition);
    (void)bring_platforms_up_to_date(acquisition.root());
}

anvil::status export_to(anvil::io_device& device, const strata::data_group& root) {
    return strata::data_exporter(&device, "org.c3d.c3d").write(root);
}

void mark_metadata(const strata::data_group& root) {
    if (!root.exists_group(schema::metadata))
        return;
    auto metadata = root.retrieve_group(schema::metadata);
    if (!metadata.exists_attribute(schema::attribute::device_type))
        write_or_create(metadata, schema::attribute::device_type,
                        std::string(schema::device::metadata));
}

} // namespace mox
