#include "platform/strata/src/plugins/library_loader.hpp"

#include <dlfcn.h>

#include "platform/strata/src/plugins/elf_file.hpp"
#include "platform/strata/src/plugins/load_failure.hpp"

namespace strata::detail {

loaded_library::loaded_library(const std::filesystem::path& file) : handle_(nullptr) {
    require_complete_elf_file(file);
    handle_ = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_)
        return;
    const auto* reason = ::dlerror();
    throw load_failure{reason ? reason : "the loader refuses it"};
}

loaded_library::~loaded_library() {
    if (handle_)
        ::dlclose(handle_);
}

void* loaded_library::find_symbol(const char* name) const noexcept {
    return ::dlsym(handle_, name);
}

} // namespace strata::detail
