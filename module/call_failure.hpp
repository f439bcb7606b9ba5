#pragma once

#include "store/python.hpp"

#include <cstddef>
#include <string>

namespace mox {

/// Inside a catch block: turns the exception caught into the pending Python exception, and returns
/// null.
PyObject* raise_caught_exception() noexcept;

/// "<function> expected <quantifier><expected> arguments, got <actual>"; `quantifier` is "", "at
/// least " or "at most ".
[[nodiscard]] std::string argument_count_message(const char* function, const char* quantifier,
                                                 std::size_t expected, std::size_t actual);

/// Throws TypeError with `message`.
[[noreturn]] void raise_type_error(const std::string& message);

} // namespace mox
