#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "module/function_row.hpp"
#include "store/outputs.hpp"
#include "store/typed_access.hpp"
#include "tests/python/probe/functions.hpp"
#include "tests/python/probe/natives.hpp"
#include "tests/python/probe/places.hpp"

namespace mox::probe {

namespace {

using std::int16_t;
using std::int32_t;
using std::int64_t;
using std::int8_t;
using std::string;
using std::uint64_t;

py_ref read_attribute(strata::data_store store, const string& path, const string& name,
                      const string& native) {
    const auto attribute = attribute_at(store, path, name);
    return with_native<int32_t, float, double, uint64_t, int64_t, string>(
        native,
        [&]<typename Native>(const Native&) { return python_from(read<Native>(attribute)); });
}

py_ref read_attribute_or(strata::data_store store, const string& path, const string& name,
                         const string& native, PyObject* fallback) {
    const auto attribute = attribute_at(store, path, name);
    return with_native<int32_t, float, double, string>(native, [&]<typename Native>(const Native&) {
        return python_from(read<Native>(attribute, native_from<Native>(fallback)));
    });
}

py_ref read_attribute_vector(strata::data_store store, const string& path, const string& name,
                             const string& native) {
    const auto attribute = attribute_at(store, path, name);
    return with_native<int8_t, int16_t, int32_t, int64_t, uint64_t, float, double, string>(
        native, [&]<typename Native>(const Native&) {
            return python_from(read_vector<Native>(attribute));
        });
}

py_ref read_set_vector(strata::data_store store, const string& path, const string& native) {
    const auto set = set_at(store, path);
    return with_native<int32_t, float, double, string>(native, [&]<typename Native>(const Native&) {
        return python_from(read_vector<Native>(set));
    });
}

/// What the reader returns, and the caller's variable behind it.
template <typename Variable> py_ref answer_and_variable(bool answer, const Variable& variable) {
    return py_ref::checked(PyTuple_Pack(2, python_from(answer).get(), python_from(variable).get()));
}

py_ref read_selection(strata::data_store store, const string& path, PyObject* coordinates,
                      const string& native, PyObject* before) {
    const auto selection = selection_at(store, path, coordinates);
    return with_native<int32_t, int64_t, float, double, bool, string>(
        native, [&]<typename Native>(const Native&) {
            auto value = native_from<Native>(before);
            const bool answer = read(selection, value);
            return answer_and_variable(answer, value);
        });
}

py_ref read_selection_vector(strata::data_store store, const string& path, PyObject* coordinates,
                             const string& native, PyObject* before) {
    const auto selection = selection_at(store, path, coordinates);
    return with_native<int32_t, float, double, string>(native, [&]<typename Native>(const Native&) {
        auto values = natives_from<Native>(before);
        const bool answer = read_vector(selection, values);
        return answer_and_variable(answer, values);
    });
}

py_ref write_attribute(strata::data_store store, const string& path, const string& name,
                       const string& native, PyObject* value) {
    auto attribute = attribute_at(store, path, name);
    return with_native<int32_t, float, double, int64_t, uint64_t, string>(
        native, [&]<typename Native>(const Native&) {
            write(attribute, native_from<Native>(value));
            return py_ref::none();
        });
}

py_ref write_attribute_vector(strata::data_store store, const string& path, const string& name,
                              const string& native, PyObject* values) {
    auto attribute = attribute_at(store, path, name);
    return with_native<int8_t, int16_t, int32_t, int64_t, uint64_t, float, double, string>(
        native, [&]<typename Native>(const Native&) {
            write_vector(attribute, natives_from<Native>(values));
            return py_ref::none();
        });
}

py_ref write_selection(strata::data_store store, const string& path, PyObject* coordinates,
                       const string& native, PyObject* values) {
    auto selection = selection_at(store, path, coordinates);
    return with_native<float, double>(native, [&]<typename Native>(const Native&) {
        write_vector(selection, natives_from<Native>(values));
        return py_ref::none();
    });
}

/// Elements of any native type into a whole set, past the typed accessors.
void fill_set(strata::data_store store, const string& path, const string& native,
              PyObject* values) {
    auto selection = select_all(set_at(store, path));
    with_native<int8_t, int16_t, int32_t, int64_t, uint64_t, float, double, string>(
        native, [&]<typename Native>(const Native&) {
            const auto given = natives_from<Native>(values);
            bool done = false;
            if constexpr (std::same_as<Native, string>) {
                std::vector<const char*> texts;
                for (const auto& text : given)
                    texts.push_back(text.c_str());
                done = selection.write_value(texts.data(), strata::data_type::string);
            } else {
                done = selection.write_value(given.data(), strata::data_type_of<Native>);
            }
            if (!done || selection.shape().element_count() != given.size())
                throw_runtime_error("the set does not take these values");
            return py_ref::none();
        });
}

/// Where the elements of a one-dimensional attribute of numbers lie in memory.
py_ref element_address(strata::data_store store, const string& path, const string& name) {
    const auto elements = strata::share_elements(attribute_at(store, path, name));
    return py_ref::checked(PyLong_FromVoidPtr(elements.data()));
}

void create_text_attribute(strata::data_store store, const string& path, const string& name,
                           const string& text) {
    if (store.root().exists_set(path))
        create_text(set_at(store, path), name.c_str(), text);
    else
        create_text(group_at(store, path), name.c_str(), text);
}

} // namespace

std::vector<PyMethodDef> typed_functions() {
    return {
        function_row<"read_attribute", &read_attribute, &read_attribute_or>(),
        function_row<"read_attribute_vector", &read_attribute_vector>(),
        function_row<"read_set_vector", &read_set_vector>(),
        function_row<"read_selection", &read_selection>(),
        function_row<"read_selection_vector", &read_selection_vector>(),
        function_row<"write_attribute", &write_attribute>(),
        function_row<"write_attribute_vector", &write_attribute_vector>(),
        function_row<"write_selection", &write_selection>(),
        function_row<"fill_set", &fill_set>(),
        function_row<"element_address", &element_address>(),
        function_row<"create_text_attribute", &create_text_attribute>(),
    };
}

} // namespace mox::probe
