#include "store/python.hpp"

#include "module/call_failure.hpp"

#include <exception>
#include <new>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "store/swig_error.hpp"

namespace mox {

namespace {

PyObject* exception_of_code(error_code code) noexcept {
    switch (code) {
    case error_code::io:
        return PyExc_IOError;
    case error_code::index:
        return PyExc_IndexError;
    case error_code::type:
        return PyExc_TypeError;
    case error_code::division_by_zero:
        return PyExc_ZeroDivisionError;
    case error_code::overflow:
        return PyExc_OverflowError;
    case error_code::syntax:
        return PyExc_SyntaxError;
    case error_code::value:
        return PyExc_ValueError;
    case error_code::system:
        return PyExc_SystemError;
    case error_code::attribute:
        return PyExc_AttributeError;
    case error_code::memory:
        return PyExc_MemoryError;
    default:
        return PyExc_RuntimeError;
    }
}

/// The message may quote bytes that are no UTF-8, such as a file's label or a path.
void set_error(PyObject* exception, std::string_view message) noexcept {
    const auto text = py_ref::steal(PyUnicode_DecodeUTF8(
        message.data(), static_cast<Py_ssize_t>(message.size()), "surrogateescape"));
    if (text)
        PyErr_SetObject(exception, text.get());
}

} // namespace

PyObject* raise_caught_exception() noexcept {
    try {
        throw;
    } catch (const python_error&) {
        return nullptr; // pending already
    } catch (const swig_error& error) {
        set_error(exception_of_code(error.code()), error.message());
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::exception& error) {
        PyErr_Clear();
        try {
            set_error(PyExc_RuntimeError,
                      std::string(error.what()) +
                          ". Exception thrown while it should not. Please contact the support "
                          "and report this problem.");
        } catch (...) {
            PyErr_NoMemory();
        }
    } catch (...) {
        PyErr_SetString(
            PyExc_RuntimeError,
            "Unknown exception thrown. Please contact the support and report this problem.");
    }
    return nullptr;
}

std::string argument_count_message(const char* function, const char* quantifier,
                                   std::size_t expected, std::size_t actual) {
    return fmt::format("{} expected {}{} arguments, got {}", function, quantifier, expected,
                       actual);
}

void raise_type_error(const std::string& message) {
    PyErr_SetString(PyExc_TypeError, message.c_str());
    throw python_error{};
}

} // namespace mox
