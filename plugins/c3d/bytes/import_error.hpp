#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace c3d {

/// A file that cannot be read. The text says what was expected and what was found, the offset
/// where.
class import_error : public std::runtime_error {
  public:
    template <typename... Arguments>
    import_error(std::uint64_t offset, fmt::format_string<Arguments...> text,
                 Arguments&&... arguments)
        : std::runtime_error(fmt::format(text, std::forward<Arguments>(arguments)...)),
          offset_(offset) {}

    /// Byte of the file, counted from 0.
    [[nodiscard]] std::uint64_t offset() const noexcept { return offset_; }

  private:
    std::uint64_t offset_;
};

} // namespace c3d
