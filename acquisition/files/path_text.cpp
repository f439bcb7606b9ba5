#include "acquisition/files/path_text.hpp"

namespace mox {

std::filesystem::path path_from_text(const std::string& text) {
    return {std::u8string(text.begin(), text.end())};
}

std::string text_of_path(const std::filesystem::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace mox
