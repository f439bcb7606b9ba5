#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <anvil/io_device.hpp>

namespace opensim {

/// A text file, line by line; only a piece of it is in memory.
class line_reader {
  public:
    /// A line that is longer is no line of a table.
    static constexpr std::size_t longest_line = std::size_t{1} << 24U;

    explicit line_reader(anvil::io_device& device);

    /// Goes to the next line; false behind the last one. Throws text_error for a line that is too
    /// long or has a NUL in it, std::runtime_error where the device cannot be read.
    bool next();

    /// Goes to the next line that has more than blanks and tabs.
    bool next_with_content();

    /// Makes the line the next one once more.
    void put_back() noexcept { is_put_back_ = true; }

    /// Without its end, and without a byte order mark. Valid until the next call.
    [[nodiscard]] std::string_view line() const noexcept { return line_; }
    /// Counts from 1.
    [[nodiscard]] std::uint64_t number() const noexcept { return number_; }
    /// Whether the line has an end of its own, which the last one may lack.
    [[nodiscard]] bool is_complete() const noexcept { return is_complete_; }
    /// Bytes of the whole file.
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

  private:
    bool fill();
    std::string_view take(std::size_t length, std::size_t end_length) noexcept;

    anvil::io_device& device_;
    std::uint64_t size_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; // of what was not taken yet
    std::size_t end_ = 0;
    std::uint64_t offset_ = 0; // of what is read next
    std::string_view line_;
    std::uint64_t number_ = 0;
    bool is_complete_ = true;
    bool is_put_back_ = false;
};

/// Whether there are only blanks and tabs.
[[nodiscard]] bool is_blank(std::string_view line) noexcept;

/// A text without a byte order mark of UTF-8 in front.
[[nodiscard]] std::string_view without_mark(std::string_view text) noexcept;

} // namespace opensim
