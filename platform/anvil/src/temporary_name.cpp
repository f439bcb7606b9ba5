#include "platform/anvil/src/temporary_name.hpp"

#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <random>

namespace anvil {

std::filesystem::path temporary_name(const std::filesystem::path& destination) {
    std::random_device entropy;
    const auto number = std::uint64_t{entropy()} << 32U | entropy();
    std::array<char, 32> name{};
    std::snprintf(name.data(), name.size(), ".%016" PRIx64 ".part", number);
    return destination.parent_path() / name.data();
}

} // namespace anvil
