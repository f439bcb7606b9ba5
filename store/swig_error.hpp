#pragma once

#include <exception>
#include <string>

namespace mox {

/// Codes of swig_error; the call frame maps each to a Python exception.
namespace error_code {
inline constexpr int unknown = -1;
inline constexpr int io = -2;
inline constexpr int runtime = -3;
inline constexpr int index = -4;
inline constexpr int type = -5;
inline constexpr int division_by_zero = -6;
inline constexpr int overflow = -7;
inline constexpr int syntax = -8;
inline constexpr int value = -9;
inline constexpr int system = -10;
inline constexpr int attribute = -11;
inline constexpr int memory = -12;
} // namespace error_code

/// A failure that an implementation function reports on purpose: the message reaches Python
/// unchanged.
class swig_error : public std::exception {
  public:
    swig_error(int code, std::string message) : message_(std::move(message)), code_(code) {}

    [[nodiscard]] const char* what() const noexcept override { return message_.c_str(); }
    [[nodiscard]] const std::string& message() const noexcept { return message_; }
    [[nodiscard]] int code() const noexcept { return code_; }

  private:
    std::string message_; // UTF-8, or bytes that Python decodes with "surrogateescape"
    int code_;
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
