#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/strata/src/tree/node_name.hpp"

namespace {

using strata::detail::name_hash;
using strata::detail::name_key;

/// 2^`pairs` names of 16 bytes for each pair, in which a pair is one of two that differ in the
/// highest bit of the first word and of both halves of the second. Multiplying by any odd number
/// keeps the first difference, and a shift by half a word makes the second of it, which cancels.
std::vector<std::string> names_that_differ_in_high_bits(unsigned pairs) {
    std::string one = "FORCE_00FORCE_01";
    std::string other = one;
    for (const std::size_t place : {std::size_t{7}, std::size_t{11}, std::size_t{15}})
        other[place] = static_cast<char>(static_cast<unsigned char>(other[place]) ^ 0x80U);
    std::vector<std::string> made{""};
    for (unsigned i = 0; i < pairs; ++i) {
        std::vector<std::string> longer;
        for (const auto& name : made) {
            longer.push_back(name + one);
            longer.push_back(name + other);
        }
        made = longer;
    }
    return made;
}

TEST(NameHash, NamesMadeToCollideDoNotWhateverTheKey) {
    const auto made = names_that_differ_in_high_bits(10);
    for (const name_key& key : {name_key{1, 0x9E3779B97F4A7C15}, name_key{0, 0xD1B54A32D192ED03},
                                name_key{0x0123456789ABCDEF, 0xBF58476D1CE4E5B9}}) {
        std::set<std::uint32_t> hashes;
        for (const auto& name : made)
            hashes.insert(name_hash(name, key));
        EXPECT_EQ(hashes.size(), made.size());
    }
}

TEST(NameHash, IsAnotherByAnotherSeedOrMultiplier) {
    for (const std::string name : {"", "A", "LASI", "FORCE_PL", "ANALOG_DESCRIPTIONS"}) {
        const std::set<std::uint32_t> hashes{
            name_hash(name, {1, 0x9E3779B97F4A7C15}), name_hash(name, {2, 0x9E3779B97F4A7C15}),
            name_hash(name, {1, 0xD1B54A32D192ED03}), name_hash(name, {2, 0xD1B54A32D192ED03})};
        EXPECT_EQ(hashes.size(), 4U) << name;
    }
}

TEST(NameHash, EveryByteOfANameCounts) {
    const name_key key{0x243F6A8885A308D3, 0x9E3779B97F4A7C15};
    for (std::size_t size = 1; size < 40; ++size) {
        const std::string name(size, 'a');
        std::set<std::uint32_t> hashes{name_hash(name, key)};
        for (std::size_t i = 0; i < size; ++i) {
            auto changed = name;
            changed[i] = 'b';
            hashes.insert(name_hash(changed, key));
        }
        EXPECT_EQ(hashes.size(), size + 1) << size;
    }
}

} // namespace
