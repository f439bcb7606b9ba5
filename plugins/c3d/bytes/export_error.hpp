#pragma once

#include <stdexcept>
#include <utility>

#include <fmt/format.h>

namespace c3d {

/// An acquisition that a C3D file cannot hold, or a device that does not take it. The text names
/// the group, the parameter or the byte, and the limit.
class export_error : public std::runtime_error {
  public:
    template <typename... Arguments>
    explicit export_error(fmt::format_string<Arguments...> text, Arguments&&... arguments)
        : std::runtime_error(fmt::format(text, std::forward<Arguments>(arguments)...)) {}
};

} // namespace c3d
