#include "platform/anvil/src/path_text.hpp"

namespace anvil {

std::string path_to_utf8(const std::filesystem::path& path) { return path.native(); }

std::filesystem::path path_from_utf8(std::string_view text) { return text; }

} // namespace anvil
