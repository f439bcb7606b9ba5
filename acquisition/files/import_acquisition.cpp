#include "acquisition/files/import_acquisition.hpp"

#include <strata/data_importer.hpp>

#include "acquisition/files/post_import.hpp"
#include "acquisition/files/source_record.hpp"

namespace mox {

imported import_acquisition(anvil::io_device& device, const std::filesystem::path& path) {
    imported result;
    strata::data_importer importer(&device, "");
    result.accepted = importer.is_accepted();
    result.status = importer.read(result.acquisition.root());
    if (!result.status)
        return result;
    shape_imported_layout(result.acquisition.root());
    if (!path.empty())
        keep_source_path(result.acquisition.root(), path);
    return result;
}

} // namespace mox
