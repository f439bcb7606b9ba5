#pragma once

// Which group and entry of the metadata a script names.

#include <string>
#include <string_view>

#include <strata/data_group.hpp>
#include <strata/data_store.hpp>

namespace mox::metadata {

/// A metadata group and an entry in it, as named; an empty entry means the group itself.
struct entry_path {
    std::string group; ///< path below the format group: "Metadata/POINT"
    std::string entry;
};

/// The place that a group argument and an entry argument name; of the entry argument the last
/// component counts.
[[nodiscard]] entry_path path_of(const std::string& group, const std::string& entry);

/// The place that one text names, whose last component is the entry.
[[nodiscard]] entry_path path_of(const std::string& path);

/// RuntimeError unless the entry argument can name an entry: not empty, no "/" or "\".
void require_entry_name(const std::string& entry);

/// The group of all metadata; RuntimeError "… does not exist" when it is missing.
[[nodiscard]] strata::data_group metadata_root(const strata::data_store& acquisition);

/// The metadata group of `path`; RuntimeError "… does not exist" when it is missing.
[[nodiscard]] strata::data_group existing_group(const strata::data_store& acquisition,
                                                const entry_path& path);

/// The same, created when it is missing.
[[nodiscard]] strata::data_group group_to_add_to(const strata::data_store& acquisition,
                                                 const entry_path& path);

/// Deletes the metadata group of `path`, which exists. RuntimeError for the group of all metadata
/// itself.
void delete_metadata_group(const strata::data_store& acquisition, const entry_path& path);

/// True when the metadata group of `path` and its entry exist.
[[nodiscard]] bool exists_entry(const strata::data_store& acquisition, const entry_path& path);

/// The entry of `path`; RuntimeError that names group and entry when it is missing.
[[nodiscard]] strata::data_attribute existing_entry(const strata::data_store& acquisition,
                                                    const entry_path& path);

} // namespace mox::metadata
