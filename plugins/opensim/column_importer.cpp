#include "plugins/opensim/column_importer.hpp"

#include <algorithm>
#include <string_view>

#include "plugins/opensim/column_file.hpp"
#include "plugins/opensim/import_trial.hpp"
#include "plugins/opensim/line_reader.hpp"

namespace opensim {

namespace {

/// Text has no control characters but those that shape it.
bool is_text(std::string_view line) {
    return std::ranges::none_of(line, [](char character) {
        return static_cast<unsigned char>(character) < ' ' && character != '\t' &&
               character != '\r' && character != '\f';
    });
}

} // namespace

bool column_importer::accepts(anvil::io_device& device) const {
    const auto start = start_of(device);
    auto rest = without_mark(start);
    while (!rest.empty()) {
        const auto length = std::min(rest.find('\n'), rest.size());
        auto line = rest.substr(0, length);
        rest.remove_prefix(std::min(length + 1, rest.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!is_text(line))
            return false;
        if (is_header_end(line))
            return true;
    }
    return false;
}

anvil::status column_importer::read(anvil::io_device& device, strata::data_group target) const {
    return import_trial(device, target, read_columns);
}

} // namespace opensim
