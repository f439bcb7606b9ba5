#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>
#include <strata/data_store.hpp>

namespace mox {

/// What an import gave.
struct imported {
    bool accepted = false;          ///< whether there is an importer for such content
    anvil::status status;           ///< of the importer; its messages name the device
    strata::data_store acquisition; ///< only when the status is a success
};

/// The kinds of channels that are asked for (schema/partial_reading.hpp); all of them without it.
using asked_kinds = std::optional<std::vector<std::string>>;

/// A new acquisition with what `device`, which is open, holds; of its channels with those of
/// `kinds` alone. The importer is chosen by the content. The acquisition keeps what was odd, and
/// `path` when the device is the file of that path (source_record.hpp). Throws as
/// shape_imported_layout does.
///
/// Needs no interpreter, and threads may import at once: nobody else sees the acquisition yet.
[[nodiscard]] imported import_acquisition(anvil::io_device& device,
                                          const std::filesystem::path& path = {},
                                          const asked_kinds& kinds = {});

} // namespace mox
