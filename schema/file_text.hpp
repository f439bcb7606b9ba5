#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace schema {

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

/// The bytes that a file has to hold so that as_utf8 gives `text`: the text itself, or, where that
/// would be read as something else, its Windows-1252 form.
[[nodiscard]] std::string as_stored(std::string_view text);

/// The same; where these are more than `most` bytes, the Windows-1252 form if that has fewer.
[[nodiscard]] std::string as_stored_within(std::string_view text, std::size_t most);

/// The Windows-1252 form of a text, if it has one that as_utf8 turns back into the text.
[[nodiscard]] std::optional<std::string> as_windows_1252(std::string_view text);

} // namespace schema
