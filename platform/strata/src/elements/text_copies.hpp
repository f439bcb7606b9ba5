#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace strata::detail {

/// Texts on their way to a caller, who frees them through data_converter_string_clean_buffer.
class text_copies {
  public:
    /// Throws std::bad_alloc, as does add().
    explicit text_copies(std::size_t expected) { copies_.reserve(expected); }

    /// Adds a terminated copy.
    void add(std::string_view text);

    /// Gives the copies to `buffer`, an array of `const char*` with room for all.
    void hand_over(void* buffer) noexcept;

  private:
    struct deleter {
        void operator()(char* text) const noexcept { std::free(text); }
    };
    std::vector<std::unique_ptr<char, deleter>> copies_;
};

/// A terminated copy of `text`, made by malloc. Throws std::bad_alloc.
[[nodiscard]] char* copy_text(std::string_view text);

/// Text `index` of a caller's array of `const char*`; a null pointer counts as empty.
[[nodiscard]] std::string_view text_at(const void* buffer, std::size_t index) noexcept;

} // namespace strata::detail
