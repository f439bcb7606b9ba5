#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace mox {

/// What went wrong; the call frame makes a Python exception of each. Any other number is one of
/// `unknown`.
enum class error_code : std::int32_t {
    unknown = -1,          ///< RuntimeError: nothing more is known
    io = -2,               ///< IOError: a file or device failed
    runtime = -3,          ///< RuntimeError: a rule was broken, or the acquisition lacks something
    index = -4,            ///< IndexError: a position outside of a sequence
    type = -5,             ///< TypeError: a value of the wrong kind was given
    division_by_zero = -6, ///< ZeroDivisionError
    overflow = -7,         ///< OverflowError: a number beyond what can hold it
    syntax = -8,           ///< SyntaxError: a text that does not follow its grammar
    value = -9,            ///< ValueError: a value of the right kind that makes no sense
    system = -10,          ///< SystemError: content that should not be there
    attribute = -11,       ///< AttributeError: an object lacks an attribute
    memory = -12,          ///< MemoryError
};

/// A failure that an implementation function reports on purpose: the message reaches Python
/// unchanged.
class swig_error : public std::exception {
  public:
    swig_error(error_code code, std::string message) : message_(std::move(message)), code_(code) {}

    [[nodiscard]] const char* what() const noexcept override { return message_.c_str(); }
    [[nodiscard]] const std::string& message() const noexcept { return message_; }
    [[nodiscard]] error_code code() const noexcept { return code_; }

  private:
    std::string message_; // UTF-8, or bytes that Python decodes with "surrogateescape"
    error_code code_;
};

/// A rule that the caller broke, or something that the acquisition lacks: RuntimeError.
[[noreturn]] inline void throw_runtime_error(std::string message) {
    throw swig_error(error_code::runtime, std::move(message));
}

/// Content that should not be there: SystemError.
[[noreturn]] inline void throw_system_error(std::string message) {
    throw swig_error(error_code::system, std::move(message));
}

} // namespace mox
