#include "acquisition/files/import_acquisition.hpp"

#include <strata/data_importer.hpp>

#include "acquisition/files/post_import.hpp"
#include "acquisition/files/source_record.hpp"
#include "schema/partial_reading.hpp"

namespace mox {

imported import_acquisition(anvil::io_device& device, const std::filesystem::path& path,
                            const asked_kinds& kinds) {
    imported result;
    strata::data_importer importer(&device, "");
    result.accepted = importer.is_accepted();
    if (kinds)
        schema::ask_for_kinds(result.acquisition.root(), *kinds);
    result.status = importer.read(result.acquisition.root());
    if (!result.status)
        return result;
    if (kinds)
        schema::forget_asked_kinds(result.acquisition.root());
    shape_imported_layout(result.acquisition.root());
    if (!path.empty())
        keep_source_path(result.acquisition.root(), path);
    return result;
}

} // namespace mox
