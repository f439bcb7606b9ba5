#include <anvil/module_path.hpp>

#include <dlfcn.h>
#include <link.h>

namespace anvil {

std::filesystem::path path_of_code(const void* address) {
    ::Dl_info about{};
    void* extra = nullptr;
    if (::dladdr1(address, &about, &extra, RTLD_DL_LINKMAP) == 0)
        return {};

    std::error_code error;
    const auto* object = static_cast<const ::link_map*>(extra);
    // The loader knows the program itself only by the name that its caller chose to give.
    if (object != nullptr && (object->l_name == nullptr || *object->l_name == '\0')) {
        auto program = std::filesystem::read_symlink("/proc/self/exe", error);
        if (!error)
            return program;
    }
    if (about.dli_fname == nullptr)
        return {};
    auto path = std::filesystem::absolute(about.dli_fname, error);
    return error ? std::filesystem::path{} : path;
}

} // namespace anvil
