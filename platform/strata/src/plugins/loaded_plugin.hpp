#pragma once

#include <filesystem>
#include <utility>

#include "platform/strata/src/plugins/library_loader.hpp"
#include "platform/strata/src/plugins/offers.hpp"

namespace strata::detail {

/// A plugin's file and what it registered. Whoever uses an offer shares the ownership of this
/// object.
class loaded_plugin {
  public:
    loaded_plugin(std::filesystem::path file, loaded_library library, offers registered) noexcept
        : file_(std::move(file)), library_(std::move(library)), offers_(std::move(registered)) {}

    [[nodiscard]] const std::filesystem::path& file() const noexcept { return file_; }
    [[nodiscard]] const loaded_library& library() const noexcept { return library_; }
    [[nodiscard]] const offers& offered() const noexcept { return offers_; }

  private:
    std::filesystem::path file_; // canonical
    loaded_library library_;
    offers offers_; // behind the library: their destructors are the library's code
};

} // namespace strata::detail
