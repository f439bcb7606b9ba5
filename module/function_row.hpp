#pragma once

// One row of the function table from a Python name and the implementation functions of its
// overloads.

#include "store/python.hpp"

#include <algorithm>
#include <cstddef>
#include <string>

#include "module/call_failure.hpp"
#include "module/call_frame.hpp"

namespace mox {

/// A text as a template argument.
template <std::size_t Size> struct fixed_text {
    char text[Size];
    consteval fixed_text(const char (&literal)[Size]) { std::copy_n(literal, Size, text); }
};

/// The entries of one Python function. Without overloads an argument list of the wrong length is
/// refused at once; with them the first one that accepts all arguments is called. An exception that
/// a check leaves pending ends the search. `Closed` is the text of call_site, empty for the usual
/// one.
template <fixed_text Name, fixed_text Closed, auto... Overloads> struct function_entry {
    static constexpr call_site site{Name.text, sizeof(Closed) == 1 ? nullptr : Closed.text};
    static constexpr bool overloaded = sizeof...(Overloads) > 1;
    static constexpr std::size_t least = std::min({call_frame<Overloads>::argument_count...});
    static constexpr std::size_t most = std::max({call_frame<Overloads>::argument_count...});
    static constexpr bool one_object = !overloaded && most == 1;

    static PyObject* call_one(PyObject* /*module*/, PyObject* argument) {
        return (call_frame<Overloads>::call(site, &argument), ...);
    }

    static PyObject* call_exact(PyObject* /*module*/, PyObject* const* arguments,
                                Py_ssize_t count) {
        if (static_cast<std::size_t>(count) == most)
            return (call_frame<Overloads>::call(site, arguments), ...);
        return raising([&] {
            return argument_count_message(Name.text, "", most, static_cast<std::size_t>(count));
        });
    }

    static PyObject* call_overloaded(PyObject* /*module*/, PyObject* const* arguments,
                                     Py_ssize_t count) {
        PyObject* result = nullptr;
        if ((call_if_accepted<Overloads>(arguments, count, result) || ...))
            return result;
        return raising([&] { return overload_message(static_cast<std::size_t>(count)); });
    }

  private:
    /// True when the call is decided: `result` is what it returns.
    template <auto Overload>
    static bool call_if_accepted(PyObject* const* arguments, Py_ssize_t count, PyObject*& result) {
        using frame = call_frame<Overload>;
        if (count != static_cast<Py_ssize_t>(frame::argument_count))
            return false;
        if (!frame::accepts(arguments))
            return PyErr_Occurred() != nullptr;
        result = frame::call(site, arguments);
        return true;
    }

    /// What the caller could have called; a wrong number of arguments is said first.
    static std::string overload_message(std::size_t count) {
        const std::string name = Name.text;
        std::string message;
        if (count < least || count > most) {
            message = count < least ? argument_count_message(Name.text, "at least ", least, count)
                                    : argument_count_message(Name.text, "at most ", most, count);
            message += "\nAdditional information:\n";
        }
        message += "Wrong number or type of arguments for overloaded function '" + name +
                   "'.\n  Possible C/C++ prototypes are:\n";
        ((message += "    " + name + call_frame<Overloads>::prototype() + "\n"), ...);
        return message;
    }

    template <typename MakeMessage> static PyObject* raising(MakeMessage&& message) {
        try {
            raise_type_error(message());
        } catch (...) {
            return raise_caught_exception();
        }
    }
};

/// The row of an entry.
template <typename Entry> PyMethodDef row_of(const char* documentation) {
    const auto fast = [](auto* function) {
        return reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function));
    };
    const char* name = Entry::site.function;
    if constexpr (Entry::one_object)
        return {name, &Entry::call_one, METH_O, documentation};
    else if constexpr (Entry::overloaded)
        return {name, fast(&Entry::call_overloaded), METH_FASTCALL, documentation};
    else
        return {name, fast(&Entry::call_exact), METH_FASTCALL, documentation};
}

/// The row for the Python function `Name`: form, argument conversion, overload choice and messages
/// follow from the signatures of `Overloads`, in the order in which messages list them.
template <fixed_text Name, auto... Overloads>
PyMethodDef function_row(const char* documentation = nullptr) {
    return row_of<function_entry<Name, "", Overloads...>>(documentation);
}

/// The same for a function that the object view calls, which says in its own words that the
/// acquisition was closed.
template <fixed_text Name, auto Implementation> PyMethodDef trial_row() {
    return row_of<function_entry<Name, "the trial was closed", Implementation>>(nullptr);
}

} // namespace mox
