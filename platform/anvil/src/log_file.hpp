#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// Drops what a regular file holds. Nothing happens where there is none or it cannot be written.
void empty_log_file(const std::filesystem::path& path) noexcept;

/// A regular file that several processes add lines to, and that any of them may set aside. No
/// member throws or waits for another process. Not thread-safe.
class log_file {
  public:
    explicit log_file(std::filesystem::path path);

    /// Opens the file and creates it and its folders where they are missing.
    /// False when it cannot be written. Requires: not open.
    [[nodiscard]] bool open() noexcept;
    void close() noexcept { file_.close(); }
    [[nodiscard]] bool is_open() const noexcept { return file_.is_open(); }

    /// Length of the open file; nothing when its path no longer leads to it, because another
    /// process set it aside or somebody deleted it.
    [[nodiscard]] std::optional<std::uint64_t> size() const noexcept;

    /// Renames the open file to `<path>.1`, unless another process has just done so, and closes it.
    /// False when it stays in place and open: another process is at it, or it cannot be renamed.
    [[nodiscard]] bool set_aside() noexcept;

    /// Adds `lines` at the end by one call of the system, which other processes' lines cannot
    /// split. The number of bytes that were taken.
    [[nodiscard]] std::size_t append(std::string_view lines) noexcept;

  private:
    std::filesystem::path path_;
    std::filesystem::path former_path_; // of the file that was set aside
    file_handle file_;
};

} // namespace anvil
