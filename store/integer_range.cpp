#include "store/python.hpp"

#include "store/integer_range.hpp"

#include <algorithm>
#include <utility>

namespace mox {

namespace {

using strata::data_type;

[[noreturn]] void raise_too_large() {
    PyErr_SetString(PyExc_OverflowError, "Python int too large to convert to C long");
    throw python_error{};
}

template <typename Integer> Integer integer_of(PyObject* number) {
    int overflow = 0;
    const long long wide = PyLong_AsLongLongAndOverflow(number, &overflow);
    if (PyErr_Occurred())
        throw python_error{};
    if (overflow != 0 || !std::in_range<Integer>(wide))
        raise_too_large();
    return static_cast<Integer>(wide);
}

/// Calls `action` with a value of the C++ type of an integer type; not for any other type.
template <typename Action> void for_integer_type(data_type type, Action&& action) {
    switch (strata::element_kind(type)) {
    case data_type::int8:
        return action(std::int8_t{});
    case data_type::uint8:
        return action(std::uint8_t{});
    case data_type::int16:
        return action(std::int16_t{});
    case data_type::uint16:
        return action(std::uint16_t{});
    case data_type::int32:
        return action(std::int32_t{});
    case data_type::uint32:
        return action(std::uint32_t{});
    case data_type::int64:
        return action(std::int64_t{});
    case data_type::uint64:
        return action(std::uint64_t{});
    default:
        return;
    }
}

} // namespace

std::int32_t c_long_of(PyObject* number) { return integer_of<std::int32_t>(number); }

std::int64_t int64_of(PyObject* number) { return integer_of<std::int64_t>(number); }

void require_in_range(data_type stored, const void* elements, std::uint64_t count,
                      data_type given) {
    bool all_fit = true;
    for_integer_type(stored, [&]<typename Stored>(Stored) {
        for_integer_type(given, [&]<typename Given>(Given) {
            const auto* numbers = static_cast<const Given*>(elements);
            all_fit = std::all_of(numbers, numbers + count,
                                  [](Given number) { return std::in_range<Stored>(number); });
        });
    });
    if (!all_fit)
        raise_too_large();
}

} // namespace mox
