#pragma once

#include <string_view>

namespace strata::detail {

// What the tree refuses, each text once. All throw store_error.

[[noreturn]] void throw_no_such_group(std::string_view path);
[[noreturn]] void throw_no_group_for(std::string_view path);
[[noreturn]] void throw_no_such_set(std::string_view path);
[[noreturn]] void throw_no_such_attribute(std::string_view path);
[[noreturn]] void throw_group_exists(std::string_view path);
[[noreturn]] void throw_set_exists(std::string_view path);
[[noreturn]] void throw_attribute_exists(std::string_view path);
[[noreturn]] void throw_bad_path(std::string_view path);
[[noreturn]] void throw_too_deep(std::string_view path);
[[noreturn]] void throw_deletes_itself();
/// A handle that denotes nothing was used; `kind` names what it should denote.
[[noreturn]] void throw_denotes_nothing(std::string_view kind);

} // namespace strata::detail
