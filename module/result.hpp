#pragma once

// How the result of an implementation function becomes the Python result.

#include "store/python.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <anvil/json.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

#include "module/shadow_class.hpp"
#include "module/wrapped.hpp"
#include "store/outputs.hpp"
#include "store/python_read.hpp"

namespace mox {

inline py_ref to_result(py_ref object) { return object ? std::move(object) : py_ref::none(); }

// Kept: counts and frame numbers come through here, too, so that they are floats.
inline py_ref to_result(double number) { return py_ref::checked(PyFloat_FromDouble(number)); }

inline py_ref to_result(const std::string& text) { return text_to_python(text); }

inline py_ref to_result(strata::data_store acquisition) {
    return with_shadow(wrap(std::move(acquisition)));
}

inline py_ref to_result(strata::data_set set) { return wrap(std::move(set)); }

template <typename Value> py_ref to_result(std::vector<Value> values);

/// None for nothing.
template <typename Value> py_ref to_result(std::optional<Value> value) {
    return value ? to_result(std::move(*value)) : py_ref::none();
}

inline py_ref to_result(anvil::json value) { return wrap(std::move(value)); }

/// A list.
template <typename Value> py_ref to_result(std::vector<Value> values) {
    auto list = py_ref::checked(PyList_New(static_cast<Py_ssize_t>(values.size())));
    for (std::size_t i = 0; i < values.size(); ++i) {
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i),
                        to_result(std::move(values[i])).release());
    }
    return list;
}

/// A list of the outputs in order; None for one that is empty.
template <std::size_t Count> py_ref to_result(outputs<Count> results) {
    auto list = py_ref::checked(PyList_New(static_cast<Py_ssize_t>(Count)));
    for (std::size_t i = 0; i < Count; ++i) {
        PyObject* output = results.values[i].release();
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i),
                        output ? output : Py_NewRef(Py_None));
    }
    return list;
}

} // namespace mox
