#pragma once

#include <exception>
#include <new>
#include <string>

#include <anvil/status.hpp>

namespace strata::detail {

/// What `call` returns, or a failure with the text of what it threw. `subject` names what is
/// called.
template <typename Call>
[[nodiscard]] anvil::status guarded_call(const std::string& subject, Call call) {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return anvil::status::out_of_memory(subject + " failed : there is not enough memory");
    } catch (const std::exception& failure) {
        return anvil::status::failure(subject + " failed : " + failure.what());
    } catch (...) {
        return anvil::status::failure(subject +
                                      " failed : it threw something that is no exception");
    }
}

} // namespace strata::detail
