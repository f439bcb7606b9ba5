#include "acquisition/files/import_acquisition.hpp"

#include <strata/data_importer.hpp>

#include "acquisition/files/post_import.hpp"

namespace mox {

imported import_acquisition(anvil::io_device& device) {
    imported result;
    result.status = strata::data_importer(&device, "").read(result.acquisition.root());
    if (result.status)
        shape_imported_layout(result.acquisition.root());
    return result;
}

} // namespace mox
