#include "store/python.hpp"

#include "module/parameter.hpp"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace mox {

namespace {

enum class range { fits, beyond, not_a_number };

/// `value` as a signed 32-bit number.
range as_int32(PyObject* value, int& number) noexcept {
    if (!PyLong_Check(value))
        return range::not_a_number;
    int overflow = 0;
    const long long wide = PyLong_AsLongLongAndOverflow(value, &overflow);
    if (overflow != 0 || wide < std::numeric_limits<std::int32_t>::min() ||
        wide > std::numeric_limits<std::int32_t>::max())
        return range::beyond;
    number = static_cast<int>(wide);
    return range::fits;
}

range as_double(PyObject* value, double& number) noexcept {
    if (PyFloat_Check(value)) {
        number = PyFloat_AS_DOUBLE(value);
        return range::fits;
    }
    if (!PyLong_Check(value))
        return range::not_a_number;
    number = PyLong_AsDouble(value);
    if (number == -1.0 && PyErr_Occurred()) {
        PyErr_Clear();
        return range::not_a_number;
    }
    return range::fits;
}

range as_float(PyObject* value, float& number) noexcept {
    double wide = 0.0;
    if (as_double(value, wide) != range::fits)
        return range::not_a_number;
    if (std::isfinite(wide) &&
        std::abs(wide) > static_cast<double>(std::numeric_limits<float>::max()))
        return range::beyond;
    number = static_cast<float>(wide);
    return range::fits;
}

/// By name: a module that shares the proxies' type has kinds of its own.
bool is_of(const py_ref& proxy, const proxy_kind& kind) noexcept {
    const auto* held = as_proxy(proxy)->kind;
    return held == &kind || std::strcmp(held->name, kind.name) == 0;
}

} // namespace

void raise_argument_error(PyObject* exception, const argument_place& place) {
    PyErr_Format(exception, "in method '%s', argument %d of type '%s'", place.site.function,
                 place.position, place.type);
    throw python_error{};
}

void raise_null_reference(const argument_place& place) {
    if (place.site.closed_text) {
        PyErr_SetString(PyExc_ValueError, place.site.closed_text);
        throw python_error{};
    }
    PyErr_Format(PyExc_ValueError,
                 "invalid null reference in method '%s', argument %d of type '%s'",
                 place.site.function, place.position, place.type);
    throw python_error{};
}

namespace conversion {

bool fits_int(PyObject* value) noexcept {
    int number = 0;
    return as_int32(value, number) == range::fits;
}

bool fits_double(PyObject* value) noexcept {
    double number = 0.0;
    return as_double(value, number) == range::fits;
}

bool fits_float(PyObject* value) noexcept {
    float number = 0.0F;
    return as_float(value, number) == range::fits;
}

int to_int(PyObject* value, const argument_place& place) {
    int number = 0;
    const auto outcome = as_int32(value, number);
    if (outcome == range::fits)
        return number;
    raise_argument_error(outcome == range::beyond ? PyExc_OverflowError : PyExc_TypeError, place);
}

double to_double(PyObject* value, const argument_place& place) {
    double number = 0.0;
    if (as_double(value, number) == range::fits)
        return number;
    raise_argument_error(PyExc_TypeError, place);
}

float to_float(PyObject* value, const argument_place& place) {
    float number = 0.0F;
    const auto outcome = as_float(value, number);
    if (outcome == range::fits)
        return number;
    raise_argument_error(outcome == range::beyond ? PyExc_OverflowError : PyExc_TypeError, place);
}

std::string to_text(PyObject* value, const argument_place& place) {
    if (!PyUnicode_Check(value))
        raise_argument_error(PyExc_TypeError, place);
    Py_ssize_t length = 0;
    const char* text = PyUnicode_AsUTF8AndSize(value, &length);
    if (!text) {
        PyErr_Clear(); // a lone surrogate has no UTF-8 form
        raise_argument_error(PyExc_TypeError, place);
    }
    // The store's texts end at their first NUL: what follows would be lost without a word.
    if (std::memchr(text, '\0', static_cast<std::size_t>(length)) != nullptr)
        raise_argument_error(PyExc_TypeError, place);
    return {text, static_cast<std::size_t>(length)};
}

py_ref to_proxy(PyObject* value, const proxy_kind& kind, const argument_place& place) {
    auto proxy = proxy_of(value);
    if (!proxy && PyErr_Occurred())
        throw python_error{};
    if (!proxy || !is_of(proxy, kind))
        raise_argument_error(PyExc_TypeError, place);
    if (!as_proxy(proxy)->wrapped)
        raise_null_reference(place);
    return proxy;
}

py_ref to_handle(PyObject* value, const argument_place& place) {
    if (value == Py_None)
        raise_null_reference(place);
    return to_proxy(value, kind_of<strata::data_store>, place);
}

bool fits_proxy(PyObject* value, const proxy_kind& kind) noexcept {
    if (value == Py_None)
        return false;
    const auto proxy = proxy_of(value);
    return proxy && is_of(proxy, kind);
}

} // namespace conversion

} // namespace mox
