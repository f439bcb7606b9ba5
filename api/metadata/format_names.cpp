#include "api/metadata/format_names.hpp"

#include <stdexcept>

namespace mox::metadata {

namespace {

/// Occurs beside `invalid`, and says as little.
constexpr auto other_invalid = static_cast<strata::data_type>(200);

} // namespace

const char* format_of_type(strata::data_type type) {
    // Kept in lower case for this one number, not for its twin 105: scripts compare the word.
    if (type == strata::data_type::uint16)
        return "integer";
    switch (strata::element_kind(type)) {
    case strata::data_type::boolean:
    case strata::data_type::int8:
    case strata::data_type::uint8:
        return "Byte";
    case strata::data_type::int16:
    case strata::data_type::uint16:
    case strata::data_type::int32:
    case strata::data_type::uint32:
    case strata::data_type::int64:
    case strata::data_type::uint64:
        return "Integer";
    case strata::data_type::float32:
    case strata::data_type::float64:
        return "Real";
    case strata::data_type::string:
        return "Char";
    case strata::data_type::invalid:
        break;
    }
    if (type == strata::data_type::invalid || type == other_invalid)
        return "UNKNOWN";
    // Kept: scripts compare this text.
    throw std::out_of_range("invalid map<K, T> key");
}

bool is_format_name(const std::string& name) noexcept {
    return name == "Integer" || name == "Char" || name == "Real" || name == "Byte";
}

} // namespace mox::metadata
