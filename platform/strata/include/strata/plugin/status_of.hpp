#pragma once

#include <exception>
#include <new>
#include <string>

#include <anvil/status.hpp>

namespace strata {

/// Success after `work()`, or the failure that it threw, with `introduction` before its text.
/// Nothing is thrown across a plugin's boundary, and want of memory stays recognisable.
template <typename Work>
[[nodiscard]] anvil::status status_of(Work work, const std::string& introduction = {}) {
    try {
        work();
        return {};
    } catch (const std::bad_alloc&) {
        return anvil::status::out_of_memory(introduction + "there is not enough memory");
    } catch (const std::exception& failure) {
        return anvil::status::failure(introduction + failure.what());
    }
}

} // namespace strata
