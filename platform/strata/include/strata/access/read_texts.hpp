#pragma once

#include <optional>
#include <string>
#include <vector>

#include <strata/data_attribute.hpp>
#include <strata/data_selection.hpp>
#include <strata/export.hpp>

namespace strata {

/// The texts of an attribute or a selection, in row-major order. Nothing when it denotes nothing or
/// holds anything but texts. Throws std::bad_alloc.
[[nodiscard]] STRATA_EXPORT std::optional<std::vector<std::string>>
read_texts(const data_attribute& attribute);
[[nodiscard]] STRATA_EXPORT std::optional<std::vector<std::string>>
read_texts(const data_selection& selection);

/// The text of an attribute with one element. Nothing for any other attribute, too.
[[nodiscard]] STRATA_EXPORT std::optional<std::string> read_text(const data_attribute& attribute);

/// The first text of an attribute. Nothing when it has no elements, denotes nothing or holds
/// anything but texts. However many there are, the others are not read.
[[nodiscard]] STRATA_EXPORT std::optional<std::string>
read_first_text(const data_attribute& attribute);

} // namespace strata
