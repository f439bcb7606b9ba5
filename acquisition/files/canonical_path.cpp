#include "acquisition/files/canonical_path.hpp"

#include <cctype>

#include <anvil/path_text.hpp>
#include <fmt/format.h>

#include "acquisition/files/open_failure.hpp"

namespace mox {

namespace {

bool starts_with_drive(std::string_view path) {
    return path.size() >= 2 && std::isalpha(static_cast<unsigned char>(path[0])) != 0 &&
           path[1] == ':';
}

} // namespace

std::filesystem::path canonical_path(const std::string& name) {
    const auto path = anvil::path_from_text(name);
    std::error_code failure;
    const bool has_nul = name.find('\0') != std::string::npos;
    const bool exists = !has_nul && std::filesystem::exists(path, failure);
    const auto canonical = std::filesystem::canonical(path, failure);
    if (has_nul)
        failure = std::make_error_code(std::errc::invalid_argument);
    if (!exists)
        throw_open_failure(fmt::format("The filename '{}' does not exist", name), failure);
    if (failure)
        throw_open_failure(
            fmt::format("Error when retrieving the canonical path for the filename '{}'", name),
            failure);
    return anvil::path_from_text(without_long_path_prefix(anvil::text_of_path(canonical)));
}

std::string without_long_path_prefix(std::string_view path) {
    constexpr std::string_view prefix = R"(\\?\)";
    constexpr std::string_view network = R"(\\?\UNC\)";
    if (path.starts_with(network))
        return R"(\\)" + std::string(path.substr(network.size()));
    if (path.starts_with(prefix) && starts_with_drive(path.substr(prefix.size())))
        return std::string(path.substr(prefix.size()));
    return std::string(path);
}

} // namespace mox
