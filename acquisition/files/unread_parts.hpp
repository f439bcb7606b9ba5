#pragma once

#include <strata/data_group.hpp>

namespace mox {

// What an acquisition of which only a part was read cannot do.

/// RuntimeError that says what was not read, unless everything was: a file that is written lacks
/// nothing of the one that was read.
void require_complete(const strata::data_group& root);

/// Whether the analog channels of its file were not read: what the parameters compute of them, like
/// the wrenches of force platforms, is unknown then, whichever channels were added since.
[[nodiscard]] bool lacks_analogs(const strata::data_group& root);

} // namespace mox
