#pragma once

#include <string_view>

#include "schema/read_attribute.hpp"

namespace mox {

/// Writes a failure line to the data store's logger; the caller goes on with default values.
void log_store_failure(std::string_view text) noexcept;

/// The failures that are logged, not raised.
namespace store_failure {
inline constexpr std::string_view read_attribute = schema::unreadable_attribute;
inline constexpr std::string_view read_attribute_type =
    "Invalid data type to read the content of an attribute";
inline constexpr std::string_view read_selection =
    "Invalid selection to read the content of a dataset";
inline constexpr std::string_view read_selection_type =
    "This selection is valid, but the selected set has an invalid data_type";
inline constexpr std::string_view read_set = "Invalid value to read the content of a dataset";
inline constexpr std::string_view attribute_count =
    "The number of elements to write is not the same than in the shape of the attribute";
inline constexpr std::string_view write_attribute =
    "Invalid value to write the content of an attribute";
inline constexpr std::string_view write_attribute_type =
    "Invalid data type to write the content of an attribute";
inline constexpr std::string_view write_selection =
    "Invalid selection to write the content of a dataset";
inline constexpr std::string_view selection_count =
    "The number of elements to write is not the same than in the shape of the selection";
inline constexpr std::string_view write_set = "Invalid value to write the content of a dataset";
} // namespace store_failure

} // namespace mox
