#pragma once

#include <string>

namespace schema {

/// What the type of an event is called: by its id where that is 0, 1 or 2, else by the words that
/// are in use for its label, compared exactly; else the label itself. Any other number, such as −1,
/// is no id of a type.
[[nodiscard]] std::string event_type(int id, const std::string& label);

} // namespace schema
