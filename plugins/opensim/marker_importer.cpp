#include "plugins/opensim/marker_importer.hpp"

#include <string_view>

#include "plugins/opensim/import_trial.hpp"
#include "plugins/opensim/line_reader.hpp"
#include "plugins/opensim/marker_file.hpp"
#include "plugins/opensim/marker_header.hpp"

namespace opensim {

bool marker_importer::accepts(anvil::io_device& device) const {
    const auto start = start_of(device);
    const auto text = without_mark(start);
    if (!text.starts_with(marker_signature))
        return false;
    const auto rest = text.substr(marker_signature.size());
    constexpr std::string_view ends_of_word = " \t\r\n";
    return rest.empty() || ends_of_word.find(rest.front()) != std::string_view::npos;
}

anvil::status marker_importer::read(anvil::io_device& device, strata::data_group target) const {
    return import_trial(device, target, read_markers);
}

} // namespace opensim
