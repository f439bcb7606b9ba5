#include <strata/detail/counted.hpp>

namespace strata::detail {

counted::~counted() = default;

} // namespace strata::detail
