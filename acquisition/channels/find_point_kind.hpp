#pragma once

#include <string_view>

#include "schema/point_kind_table.hpp"

namespace mox {

/// The kind whose type word is `word`; RuntimeError "Unsupported point type : ..." when there is
/// none.
[[nodiscard]] const schema::point_kind& point_kind_of_word(std::string_view word);

/// The kind whose group is called `name`, compared exactly; null when there is none.
[[nodiscard]] const schema::point_kind* find_point_kind_of_group(std::string_view name) noexcept;

} // namespace mox
