#include <strata/store_error.hpp>

namespace strata {

store_error::~store_error() = default;

} // namespace strata
