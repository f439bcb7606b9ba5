#pragma once

#include <cstdint>

#include <strata/data_type.hpp>

namespace mox {

/// SystemError "Trying to read an unsupported data type for a data set" when `count` is 1 and a
/// single value of `type` has no Python form: bytes and unsigned numbers are read in arrays only.
void require_readable(strata::data_type type, std::uint64_t count);

} // namespace mox
