#include "store/python.hpp"

#include <anvil/path_text.hpp>
#include <fmt/format.h>

#include "module/application.hpp"
#include "module/call_failure.hpp"
#include "module/function_table.hpp"
#include "module/handle_proxy.hpp"
#include "module/log_at_exit.hpp"
#include "module/numpy_binding.hpp"
#include "module/plugin_folder.hpp"
#include "module/trial_table.hpp"

namespace {

/// Creates the application where there is none yet, and loads the plugins.
void start_application() {
    (void)mox::the_application();
    mox::log(anvil::log_level::info, fmt::format("Orvane bindings {} started", mox::version()));
    mox::log(anvil::log_level::info,
             fmt::format("Plugins path: {}", anvil::text_of_path(mox::plugins_path())));
    mox::load_plugins(mox::plugins_path());
    mox::module_logger()->flush();
}

PyModuleDef define(const char* name) noexcept {
    PyModuleDef definition{};
    definition.m_base = PyModuleDef_HEAD_INIT;
    definition.m_name = name;
    definition.m_size = 0; // not −1: a second import in the process runs the initialisation again
    return definition;
}

PyModuleDef definition = define("_moxPY");
PyModuleDef trial_definition = define("_moxPY.trial");

/// The functions of the object view as `_moxPY.trial`, which statements import like any module.
void add_trial_functions(PyObject* module) {
    trial_definition.m_methods = mox::trial_table();
    const auto functions =
        mox::py_ref::checked(PyModule_Create2(&trial_definition, PYTHON_API_VERSION));
    if (PyModule_AddObjectRef(module, "trial", functions.get()) < 0 ||
        PyDict_SetItemString(PyImport_GetModuleDict(), "_moxPY.trial", functions.get()) < 0)
        throw mox::python_error{};
}

} // namespace

PyMODINIT_FUNC PyInit__moxPY() {
    try {
        mox::ready_proxy_type();
        definition.m_methods = mox::function_table();
        auto module = mox::py_ref::checked(PyModule_Create2(&definition, PYTHON_API_VERSION));
        if (!mox::bind_numpy())
            return nullptr;
        add_trial_functions(module.get());
        start_application();
        mox::complete_log_at_exit();
        return module.release();
    } catch (...) {
        return mox::raise_caught_exception();
    }
}
