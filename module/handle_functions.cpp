#include "store/python.hpp"

#include "module/handle_functions.hpp"

#include <utility>

#include "api/metadata/data_set_dictionary.hpp"
#include "module/shadow_class.hpp"
#include "store/json_conversion.hpp"

namespace mox::handles {

py_ref instance_method(PyObject* function) {
    return py_ref::checked(PyInstanceMethod_New(function));
}

strata::data_store new_store() { return {}; }

void delete_store(store_pointer handle) {
    auto* proxy = as_proxy(handle.proxy);
    proxy->owns = false;
    proxy->kind->destroy(std::exchange(proxy->wrapped, nullptr));
}

void register_shadow(PyObject* shadow_class) { register_shadow_class(shadow_class); }

void initialise_shadow_instance(PyObject* instance, PyObject* handle) {
    initialise_shadow(instance, handle);
}

py_ref throw_type_error(PyObject* value) { throw_unsupported_type(value); }

py_ref metadata_from_data_set(const_data_set set) {
    return metadata::data_set_dictionary(set.value);
}

py_ref from_json(const_json value) { return json_to_python(value.value); }

anvil::json to_json(PyObject* value) { return python_to_json(value); }

} // namespace mox::handles
