#include "store/python.hpp"

#include "api/events/event_tuples.hpp"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include <fmt/format.h>

#include "store/python_read.hpp"
#include "store/swig_error.hpp"

namespace mox::events {

namespace {

std::string to_text(PyObject* value, const char* field) {
    if (!PyUnicode_Check(value)) {
        PyErr_Format(PyExc_TypeError, "the %s of an event is a str, not %s", field,
                     Py_TYPE(value)->tp_name);
        throw python_error{};
    }
    // The way back of texts that a file does not have in UTF-8.
    const auto bytes =
        py_ref::checked(PyUnicode_AsEncodedString(value, "utf-8", "surrogateescape"));
    std::string text(PyBytes_AS_STRING(bytes.get()),
                     static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.get())));
    // The store's texts end at their first NUL: what follows would be lost without a word.
    if (text.find('\0') != std::string::npos)
        throw swig_error(error_code::value,
                         fmt::format("the {} of an event cannot hold a NUL character", field));
    return text;
}

float to_time(PyObject* value) {
    const double time = PyFloat_AsDouble(value);
    if (time == -1.0 && PyErr_Occurred())
        throw python_error{};
    const auto narrowed = static_cast<float>(time);
    if (!std::isfinite(narrowed))
        throw swig_error(
            error_code::value,
            fmt::format("the time of an event is a finite number in single precision, not {}",
                        time));
    return narrowed;
}

std::int32_t to_id(PyObject* value) {
    const auto whole = py_ref::checked(PyNumber_Index(value));
    int overflow = 0;
    const auto number = PyLong_AsLongLongAndOverflow(whole.get(), &overflow);
    if (number == -1 && PyErr_Occurred())
        throw python_error{};
    using limits = std::numeric_limits<std::int32_t>;
    if (overflow != 0 || number < limits::min() || number > limits::max())
        throw swig_error(error_code::overflow, "the id of an event has 32 bits");
    return static_cast<std::int32_t>(number);
}

} // namespace

py_ref to_tuple(const schema::event_occurrence& event) {
    const auto label = text_to_python(event.label);
    const auto context = text_to_python(event.context);
    const auto subject = text_to_python(event.subject);
    const auto description = text_to_python(event.description);
    return py_ref::checked(Py_BuildValue("(dOOOOi)", double{event.time_s}, label.get(),
                                         context.get(), subject.get(), description.get(),
                                         static_cast<int>(event.icon)));
}

schema::event_occurrence from_tuple(PyObject* tuple) {
    if (!PyTuple_Check(tuple) || PyTuple_GET_SIZE(tuple) != 6)
        throw swig_error(error_code::type,
                         "an event is (time, label, context, subject, description, id)");
    const auto field = [&](Py_ssize_t index) { return PyTuple_GET_ITEM(tuple, index); };
    schema::event_occurrence event;
    event.time_s = to_time(field(0));
    event.label = to_text(field(1), "label");
    event.context = to_text(field(2), "context");
    event.subject = to_text(field(3), "subject");
    event.description = to_text(field(4), "description");
    event.icon = to_id(field(5));
    return event;
}

} // namespace mox::events
