#pragma once

#include <stdexcept>

#include <strata/export.hpp>

namespace strata {

/// The store was asked for what it cannot do: a node that does not exist is retrieved or deleted,
/// one that exists is created, an extent is negative or beyond what can be addressed, a path has an
/// empty component or lies too deep. Nothing was changed.
class STRATA_EXPORT store_error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
    ~store_error() override;
};

} // namespace strata
