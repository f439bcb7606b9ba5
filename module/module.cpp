#include "store/python.hpp"

#include <fmt/format.h>

#include "module/application.hpp"
#include "module/call_failure.hpp"
#include "module/function_table.hpp"
#include "module/handle_proxy.hpp"
#include "module/numpy_binding.hpp"
#include "module/plugin_folder.hpp"

namespace {

/// Creates the application where there is none yet, and loads the plugins.
void start_application() {
    (void)mox::the_application();
    mox::log(anvil::log_level::info, fmt::format("Orvane bindings {} started", mox::version()));
    const auto path = mox::plugins_path().u8string();
    mox::log(anvil::log_level::info,
             fmt::format("Plugins path: {}", std::string(path.begin(), path.end())));
    mox::load_plugins(mox::plugins_path());
    mox::module_logger()->flush();
}

PyModuleDef definition = [] {
    PyModuleDef module_definition{};
    module_definition.m_base = PyModuleDef_HEAD_INIT;
    module_definition.m_name = "_moxPY";
    module_definition.m_size =
        0; // not −1: a second import in the process runs the initialisation again
    return module_definition;
}();

} // namespace

PyMODINIT_FUNC PyInit__moxPY() {
    try {
        mox::ready_proxy_type();
        definition.m_methods = mox::function_table();
        auto module = mox::py_ref::checked(PyModule_Create2(&definition, PYTHON_API_VERSION));
        if (!mox::bind_numpy())
            return nullptr;
        start_application();
        return module.release();
    } catch (...) {
        return mox::raise_caught_exception();
    }
}
