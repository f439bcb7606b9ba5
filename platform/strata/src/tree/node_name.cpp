#include "platform/strata/src/tree/node_name.hpp"

#include <chrono>
#include <exception>
#include <random>

#include <strata/access/name_hash.hpp>

namespace strata {

namespace detail {

namespace {

std::uint64_t random_word() noexcept {
    try {
        std::random_device entropy;
        return std::uint64_t{entropy()} << 32U | entropy();
    } catch (const std::exception&) {
        // No source of randomness: still nothing that a file could know.
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        return static_cast<std::uint64_t>(now) * 0x9E3779B97F4A7C15;
    }
}

} // namespace

name_key draw_name_key() noexcept {
    // An odd multiplier loses no bit of a name; one with bits in its upper half mixes them all.
    return {random_word(), random_word() | 1U | std::uint64_t{1} << 63U};
}

const name_key process_name_key = draw_name_key();

} // namespace detail

std::size_t name_hash(std::string_view name) noexcept { return detail::node_name_hash(name); }

} // namespace strata
