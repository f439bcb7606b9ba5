#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "platform/anvil/src/log_file.hpp"

namespace anvil {

/// Writes lines to a log file. Not thread-safe. No member throws or waits for another process.
///
/// A file that cannot be opened or written takes no lines for ten seconds; then it is tried again.
/// The same pause follows when a full file cannot be set aside; meanwhile it grows.
class log_writer {
  public:
    using clock = std::chrono::steady_clock;
    static constexpr std::uint64_t full_size = std::uint64_t{5} * 1024 * 1024;
    static constexpr std::chrono::seconds pause{10};

    /// With `sets_aside`, a file that has reached its full size is set aside before the next lines.
    /// `now` is the clock by which pauses are measured.
    log_writer(std::filesystem::path path, bool sets_aside,
               clock::time_point (*now)() noexcept = &clock::now);

    /// Writes `lines`, each with its line end, or drops them. On return other processes can read
    /// what was written.
    void write(std::string_view lines) noexcept;

    /// Closes the file; the next line opens it again.
    void close() noexcept { file_.close(); }

  private:
    [[nodiscard]] bool make_ready() noexcept;
    [[nodiscard]] bool is_full(std::uint64_t size) const noexcept;
    [[nodiscard]] bool append(std::string_view lines) noexcept;

    log_file file_;
    bool sets_aside_;
    clock::time_point (*now_)() noexcept;
    clock::time_point retry_time_ = clock::time_point::min();    // of opening the file
    clock::time_point rotation_time_ = clock::time_point::min(); // of setting it aside
    bool line_is_broken_ = false; // the file ends in a part of a line, because the disk was full
};

} // namespace anvil
