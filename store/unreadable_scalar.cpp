#include "store/unreadable_scalar.hpp"

#include "store/swig_error.hpp"

namespace mox {

void require_readable(strata::data_type type, std::uint64_t count) {
    if (count != 1)
        return;
    switch (strata::element_kind(type)) {
    case strata::data_type::boolean:
    case strata::data_type::int16:
    case strata::data_type::int32:
    case strata::data_type::int64:
    case strata::data_type::float32:
    case strata::data_type::float64:
    case strata::data_type::string:
        return;
    default:
        throw_system_error("Trying to read an unsupported data type for a data set");
    }
}

} // namespace mox
