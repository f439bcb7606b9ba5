#pragma once

#include <string_view>
#include <system_error>

namespace anvil_test {

/// Whether an error of the library says this. The operator == would compare categories by their
/// addresses, and each library has its own of them where it contains the standard library.
inline bool has_reason(const std::error_code& error, std::errc reason) {
    const auto expected = std::make_error_condition(reason);
    return error.value() == expected.value() &&
           std::string_view{error.category().name()} == expected.category().name();
}

} // namespace anvil_test
