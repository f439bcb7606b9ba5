#pragma once

#include <strata/data_group.hpp>

namespace mox {

// What an acquisition of which only a part was read cannot do.

/// RuntimeError that says what was not read, unless everything was: a file that is written lacks
/// nothing of the one that was read.
void require_complete(const strata::data_group& root);

/// Whether there are no analog channels because those of the file were not read: what is computed
/// from them is unknown then.
[[nodiscard]] bool lacks_analogs(const strata::data_group& root);

} // namespace mox
