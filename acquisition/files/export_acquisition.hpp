#pragma once

#include <filesystem>

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>
#include <strata/data_group.hpp>
#include <strata/data_store.hpp>

namespace mox {

// The steps of writing an acquisition, in their order.

/// True when the last component of `path` ends in ".c3d", in capitals or not.
[[nodiscard]] bool has_c3d_extension(const std::filesystem::path& path);

/// `path` from the root of the file system on, with the system's own separators; `path` itself when
/// there is no current directory.
[[nodiscard]] std::filesystem::path absolute_path(const std::filesystem::path& path);

/// Brings force platforms and the order of the analog channels up to date. RuntimeError when only a
/// part of a file was read, the frequency is not set, or points and analog channels contradict each
/// other; nothing has changed then.
void prepare_export(strata::data_store acquisition);

/// Writes what is below `root` as a C3D file to `device`, which is open, and commits it there.
/// Needs no interpreter.
[[nodiscard]] anvil::status export_to(anvil::io_device& device, const strata::data_group& root);

/// What the group of the metadata says of itself after a writing, whether that succeeded or not.
void mark_metadata(const strata::data_group& root);

} // namespace mox
