#pragma once

#include <string>
#include <string_view>

namespace c3d {

/// A fixed-width text without its padding: cut at the first NUL, then without trailing blanks.
/// Leading blanks stay.
[[nodiscard]] std::string_view without_padding(std::string_view field) noexcept;

/// Text as UTF-8. What is not valid UTF-8 is read as Windows-1252; bytes that have no character
/// there stay as they are, so that the result is not valid UTF-8 exactly where something could not
/// be decoded. A UTF-8 text whose last character was cut off by the field's width stays as it is,
/// too.
[[nodiscard]] std::string as_utf8(std::string_view bytes);

/// True for complete UTF-8 without overlong forms and surrogates.
[[nodiscard]] bool is_utf8(std::string_view bytes) noexcept;

} // namespace c3d
