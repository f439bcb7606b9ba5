#pragma once

#include <filesystem>
#include <memory>

#include <anvil/export.hpp>
#include <anvil/io_device.hpp>

namespace anvil {

/// Modes of io_file::open.
enum io_mode : int {
    io_read = 1,  ///< read an existing regular file
    io_write = 2, ///< write a new file, or replace an existing one
};

/// A file as a device. Closed on destruction.
class ANVIL_EXPORT io_file final : public io_device {
  public:
    io_file();
    ~io_file() override;

    /// Opens `path`; a file that was open is closed first. Reports no failure itself: ask
    /// is_open(). A directory, a pipe or a device node is not opened.
    void open(const std::filesystem::path& path, int mode);
    void close();

    [[nodiscard]] bool is_open() const noexcept override;
    [[nodiscard]] std::uint64_t size() const noexcept override;
    [[nodiscard]] io_result read_at(std::uint64_t offset,
                                    std::span<std::byte> buffer) noexcept override;
    [[nodiscard]] io_result write(std::span<const std::byte> bytes) noexcept override;
    [[nodiscard]] std::string name() const override;

  private:
    struct state;
    std::unique_ptr<state> state_;
};

} // namespace anvil
