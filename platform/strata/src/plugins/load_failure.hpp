#pragma once

#include <stdexcept>

namespace strata::detail {

/// Why a file cannot be loaded as a plugin; continues a sentence about the file.
class load_failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace strata::detail
