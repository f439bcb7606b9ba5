#include "store/python.hpp"

#include <vector>

#include "module/call_failure.hpp"
#include "module/handle_proxy.hpp"
#include "module/numpy_binding.hpp"
#include "tests/python/probe/functions.hpp"

namespace {

PyMethodDef* function_table() {
    static std::vector<PyMethodDef> table = [] {
        std::vector<PyMethodDef> rows;
        for (const auto& part : {mox::probe::frame_functions(), mox::probe::tree_functions(),
                                 mox::probe::typed_functions(), mox::probe::value_functions(),
                                 mox::probe::path_functions(), mox::probe::layout_functions()})
            rows.insert(rows.end(), part.begin(), part.end());
        rows.push_back({nullptr, nullptr, 0, nullptr});
        return rows;
    }();
    return table.data();
}

/// Handles of `_moxPY` are taken, and made, as its own.
void share_handles() {
    const auto module = mox::py_ref::checked(PyImport_ImportModule("_moxPY"));
    auto handle =
        mox::py_ref::checked(PyObject_CallMethod(module.get(), "new_data_store", nullptr));
    // An instance of a shadow class, where one is registered, holds the proxy.
    if (PyObject_HasAttr(handle.get(), mox::this_name()))
        handle = mox::py_ref::checked(PyObject_GetAttr(handle.get(), mox::this_name()));
    mox::share_proxy_type(Py_TYPE(handle.get()));
}

PyModuleDef definition = [] {
    PyModuleDef module_definition{};
    module_definition.m_base = PyModuleDef_HEAD_INIT;
    module_definition.m_name = "_mox_probe";
    module_definition.m_size = -1;
    return module_definition;
}();

} // namespace

PyMODINIT_FUNC PyInit__mox_probe() {
    try {
        mox::ready_proxy_type();
        definition.m_methods = function_table();
        auto module = mox::py_ref::checked(PyModule_Create(&definition));
        if (!mox::bind_numpy())
            return nullptr;
        share_handles();
        return module.release();
    } catch (...) {
        return mox::raise_caught_exception();
    }
}
