#pragma once

#include <filesystem>
#include <utility>

namespace strata::detail {

/// A shared library that the platform's loader holds in the process for as long as this object
/// lives.
class loaded_library {
  public:
    /// Loads `file`, an absolute path, or refers to it once more when it is loaded already. What
    /// the library defines stays invisible to other libraries. Throws load_failure.
    explicit loaded_library(const std::filesystem::path& file);
    loaded_library(loaded_library&& other) noexcept
        : handle_(std::exchange(other.handle_, nullptr)) {}
    loaded_library& operator=(loaded_library&&) = delete;
    ~loaded_library();

    /// Address of a function that the library exports; null when it exports none of this name.
    [[nodiscard]] void* find_symbol(const char* name) const noexcept;

    /// Whether both are the same library in the process.
    [[nodiscard]] bool is_same(const loaded_library& other) const noexcept {
        return handle_ == other.handle_;
    }

  private:
    void* handle_;
};

} // namespace strata::detail
