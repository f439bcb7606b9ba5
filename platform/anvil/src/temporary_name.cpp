#include "platform/anvil/src/temporary_name.hpp"

#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <random>

namespace anvil {

namespace {

/// FNV-1a, in 64 bits. Every process has to come to the same one.
std::uint64_t hash_of(const std::filesystem::path& name) noexcept {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const auto unit : name.native()) {
        hash ^= static_cast<std::uint64_t>(unit);
        hash *= 0x100000001b3;
    }
    return hash;
}

} // namespace

std::filesystem::path::string_type temporary_prefix(const std::filesystem::path& destination) {
    std::array<char, 32> prefix{};
    std::snprintf(prefix.data(), prefix.size(), ".%016" PRIx64 "-",
                  hash_of(destination.filename()));
    return std::filesystem::path{prefix.data()}.native();
}

std::filesystem::path temporary_name(const std::filesystem::path& destination) {
    std::random_device entropy;
    const auto number = std::uint64_t{entropy()} << 32U | entropy();
    std::array<char, 32> rest{};
    std::snprintf(rest.data(), rest.size(), "%016" PRIx64 ".part", number);
    auto path = destination.parent_path() / temporary_prefix(destination);
    path += rest.data();
    return path;
}

} // namespace anvil
