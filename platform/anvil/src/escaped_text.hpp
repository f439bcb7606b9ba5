#pragma once

#include <string>
#include <string_view>

namespace anvil {

/// Adds `text` (UTF-8) to `line` as something that a terminal or an editor shows on one line, from
/// left to right, and that nothing else can look like: a backslash is written `\\`, line ends `\n`
/// and `\r`, other control characters but the tab `\x1B`, and beyond ASCII controls, separators of
/// lines and what changes the direction of writing `\u202E`. Bytes that are no UTF-8 stay as they
/// are, unless a terminal could take one for a control character.
void append_escaped(std::string& line, std::string_view text);

} // namespace anvil
