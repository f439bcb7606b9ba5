#pragma once

#include <filesystem>
#include <memory>

#include <anvil/export.hpp>
#include <anvil/io_device.hpp>

namespace anvil {

/// Modes of io_file::open.
enum io_mode : int {
    io_read = 1,  ///< read an existing regular file
    io_write = 2, ///< write a new file, or the successor of an existing one
};

/// A file as a device. Closed on destruction.
///
/// What is written goes into a file of the same folder that is the writer's alone. It has no name
/// where the system has such files, else one of its own. commit() puts it in the place of `path` in
/// one step; until then, and when the process dies, the old file is what it was. Closing without
/// commit() drops what was written. What a process that died left under a name goes when the same
/// file is next opened for writing, unless the file system has no locks.
///
/// The new file has the group, permissions, access lists and extended attributes of the file that
/// was there, and its owner where the system allows; where it has less than all of that nothing is
/// replaced, and commit() says what could not be kept and why. A change of owner counts as that
/// only where it would give the old one more than before.
class ANVIL_EXPORT io_file final : public io_device {
  public:
    io_file();
    ~io_file() override;

    /// Opens `path`; a file that was open is closed first. Reports no failure itself: ask
    /// is_open() and failure(). A directory, a pipe or a device node is not opened, nor for writing
    /// a file that must not be changed. A link is followed.
    void open(const std::filesystem::path& path, int mode);
    void close();

    /// Why the last open did not open, or why the first read, write or commit that failed since
    /// then did; no error when all went well. Closing leaves it.
    [[nodiscard]] std::error_code failure() const noexcept;

    [[nodiscard]] bool is_open() const noexcept override;
    [[nodiscard]] std::uint64_t size() const noexcept override;
    [[nodiscard]] io_result read_at(std::uint64_t offset,
                                    std::span<std::byte> buffer) noexcept override;
    [[nodiscard]] io_result write(std::span<const std::byte> bytes) noexcept override;
    /// An error also when a write failed before. The file is closed afterwards in any case.
    [[nodiscard]] std::error_code commit() noexcept override;
    [[nodiscard]] std::string name() const override;

  private:
    struct state;
    std::unique_ptr<state> state_;
};

} // namespace anvil
