#include "platform/strata/src/plugins/library_loader.hpp"

#include <system_error>

#include <windows.h>

#include "platform/strata/src/plugins/load_failure.hpp"

namespace strata::detail {

namespace {

/// Keeps the system from asking the user about a file that it cannot load.
class without_error_boxes {
  public:
    without_error_boxes() {
        ::SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &former_);
    }
    without_error_boxes(const without_error_boxes&) = delete;
    without_error_boxes& operator=(const without_error_boxes&) = delete;
    ~without_error_boxes() { ::SetThreadErrorMode(former_, nullptr); }

  private:
    DWORD former_ = 0;
};

} // namespace

loaded_library::loaded_library(const std::filesystem::path& file) : handle_(nullptr) {
    const without_error_boxes quiet;
    // The altered search finds libraries that lie beside the plugin.
    handle_ = ::LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (handle_)
        return;
    const auto reason = ::GetLastError();
    throw load_failure{reason == ERROR_BAD_EXE_FORMAT
                           ? "it is no shared library"
                           : std::system_category().message(static_cast<int>(reason))};
}

loaded_library::~loaded_library() {
    if (handle_)
        ::FreeLibrary(static_cast<HMODULE>(handle_));
}

void* loaded_library::find_symbol(const char* name) const noexcept {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
}

} // namespace strata::detail
