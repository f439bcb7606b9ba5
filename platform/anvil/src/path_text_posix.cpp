#include <anvil/path_text.hpp>

namespace anvil {

std::string text_of_path(const std::filesystem::path& path) { return path.native(); }

std::filesystem::path path_from_text(std::string_view text) { return text; }

} // namespace anvil
