#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace schema {

/// What was odd about a file that was read, and how it was read all the same, or about an
/// acquisition that is written. Each text is kept once.
class warnings {
  public:
    template <typename... Arguments>
    void add(fmt::format_string<Arguments...> text, Arguments&&... arguments) {
        keep(fmt::format(text, std::forward<Arguments>(arguments)...));
    }

    /// Adds all of `others`.
    void add_all(const warnings& others);

    [[nodiscard]] const std::vector<std::string>& texts() const noexcept { return texts_; }

    /// The texts, and last how many more there were.
    [[nodiscard]] std::vector<std::string> lines() const;

    /// Hands the lines to the store's logger, each with the name of the file.
    void log(const std::string& file_name) const;

  private:
    void keep(std::string text);

    std::vector<std::string> texts_;
    std::size_t left_out_ = 0;
};

} // namespace schema
