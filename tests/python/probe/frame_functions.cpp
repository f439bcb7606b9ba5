#include "store/python.hpp"

#include <new>
#include <stdexcept>
#include <string>

#include <anvil/json.hpp>
#include <anvil/logging.hpp>
#include <strata/data_store.hpp>
#include <strata/strata_logger.hpp>

#include "module/function_row.hpp"
#include "module/overload.hpp"
#include "module/wrapped.hpp"
#include "store/outputs.hpp"
#include "store/swig_error.hpp"
#include "tests/python/probe/functions.hpp"
#include "tests/python/probe/natives.hpp"
#include "tests/python/probe/places.hpp"

namespace mox::probe {

namespace {

py_ref take_int(int value) { return python_from(std::int64_t{value}); }
py_ref take_double(double value) { return python_from(value); }
py_ref take_double_reference(const double& value) { return python_from(value); }
py_ref take_float(float value) { return python_from(value); }
std::string take_text(const std::string& value) { return value; }
std::string take_text_reference(std::string& value) { return value; }
py_ref take_object(PyObject* value) { return py_ref::borrow(value); }
strata::data_store take_store(strata::data_store store) { return store; }

/// An int at the third position, behind two outputs.
outputs<2> int_behind_outputs(int value) { return {take_int(value), take_int(value)}; }
outputs<2> outputs_left_empty() { return {}; }
outputs<2> second_output_left_empty(PyObject* value) { return {py_ref::borrow(value)}; }
py_ref result_left_empty() { return {}; }
void no_result() {}

std::string choose_int(strata::data_store /*store*/, int /*value*/) { return "int"; }
std::string choose_float(strata::data_store /*store*/, float /*value*/) { return "float"; }
std::string choose_text(strata::data_store /*store*/, const std::string& /*value*/) {
    return "text";
}

void throw_code(int code, const std::string& message) {
    throw swig_error(static_cast<error_code>(code), message);
}
void throw_standard(const std::string& what) { throw std::runtime_error(what); }
void throw_unknown() { throw 42; }
void throw_no_memory() { throw std::bad_alloc(); }
outputs<2> throw_behind_outputs(const std::string& message) { throw_runtime_error(message); }

/// A handle on a set, as `metadata_from_data_set` takes it.
py_ref data_set_proxy(strata::data_store store, const std::string& path) {
    return wrap(set_at(store, path));
}

anvil::json json_from_text(const std::string& text) { return anvil::json::parse(text); }

void log_line(const std::string& text) {
    anvil::log_line(*get_strata_logger(), anvil::log_level::info, text);
}

void flush_log() { get_strata_logger()->flush(); }

} // namespace

std::vector<PyMethodDef> frame_functions() {
    return {
        function_row<"take_int", &take_int>(),
        function_row<"take_double", &take_double>(),
        function_row<"take_double_reference", &take_double_reference>(),
        function_row<"take_float", &take_float>(),
        function_row<"take_text", &take_text>(),
        function_row<"take_text_reference", &take_text_reference>(),
        function_row<"take_object", &take_object>(),
        function_row<"take_store", &take_store>(),
        function_row<"int_behind_outputs", &int_behind_outputs>(),
        function_row<"outputs_left_empty", &outputs_left_empty>(),
        function_row<"second_output_left_empty", &second_output_left_empty>(),
        function_row<"result_left_empty", &result_left_empty>(),
        function_row<"no_result", &no_result>(),
        function_row<"choose", &choose_int, &choose_float, &choose_text>(),
        function_row<"throw_code", &throw_code>(),
        function_row<"throw_standard", &throw_standard>(),
        function_row<"throw_unknown", &throw_unknown>(),
        function_row<"throw_no_memory", &throw_no_memory>(),
        function_row<"throw_behind_outputs", &throw_behind_outputs>(),
        function_row<"data_set_proxy", &data_set_proxy>(),
        function_row<"json_from_text", &json_from_text>(),
        function_row<"log_line", &log_line>(),
        function_row<"flush_log", &flush_log>(),
    };
}

} // namespace mox::probe
