#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <system_error>

#include <anvil/io_device.hpp>

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// The successor of a regular file, written beside it from its start. The members have the
/// contracts of io_device and io_file.
class write_file {
  public:
    write_file() = default;
    write_file(const write_file&) = delete;
    write_file& operator=(const write_file&) = delete;
    ~write_file() { close(); }

    /// Requires: not open. The destination is not touched. Gives the reason when the file is not
    /// open afterwards.
    [[nodiscard]] std::error_code open(const std::filesystem::path& path);

    /// Drops what was written and not committed.
    void close() noexcept;

    [[nodiscard]] bool is_open() const noexcept { return file_.is_open(); }
    [[nodiscard]] io_result write(std::span<const std::byte> bytes) noexcept;
    [[nodiscard]] std::error_code commit() noexcept;

  private:
    [[nodiscard]] io_result write_bytes(std::span<const std::byte> bytes) noexcept;
    /// Brings what was written to the medium and gives the file the destination's rights and name.
    [[nodiscard]] std::error_code replace_destination() noexcept;
    [[nodiscard]] std::error_code settle_access() noexcept;
    void remove_temporary() noexcept;

    file_handle file_;
    /// The file to be replaced, where its rights have to be copied; else not open.
    file_handle old_;
    std::filesystem::path destination_;
    std::filesystem::path temporary_;  ///< what is written so far; empty while it has no name
    std::filesystem::path later_name_; ///< of what is written, where it gets one in the end alone
    std::filesystem::path sample_;     ///< the name for a file that shows what rights new ones get
    std::error_code failure_;          ///< of the first write that failed
};

} // namespace anvil
