#include <fstream>
#include <new>

#include <unistd.h>

#include <strata/access/append_elements.hpp>

#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_store;
using strata::data_type;
using strata_test::part;
using strata_test::shape;
using strata_test::values;

std::uint64_t physical_memory() {
    return static_cast<std::uint64_t>(::sysconf(_SC_PHYS_PAGES)) *
           static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

/// Bytes of the machine's memory that this process takes.
std::uint64_t resident_memory() {
    std::uint64_t total = 0;
    std::uint64_t resident = 0;
    std::ifstream{"/proc/self/statm"} >> total >> resident;
    return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

constexpr std::uint64_t much = std::uint64_t{64} << 20;

TEST(Memory, HugeSetTakesNoneUntilItIsWritten) {
    const data_store store;
    const auto samples = physical_memory() / 2 / sizeof(double);
    const auto before = resident_memory();
    const auto set = store.root().create_set("s", shape({1, 1, static_cast<std::int64_t>(samples)}),
                                             data_type::float64);
    EXPECT_EQ(values<double>(part(set, {0, 1, 0, 1, samples - 1, 1})), std::vector<double>{0.0});
    EXPECT_LT(resident_memory(), before + much);
}

TEST(Memory, HugeGrowthTakesNoneUntilItIsWritten) {
    const data_store store;
    const auto set = strata_test::counting_set(store.root(), "s", {3, 1, 2});
    const auto samples = physical_memory() / 4 / sizeof(double) / 3;
    const auto before = resident_memory();
    strata_test::resize(set, {3, 1, samples});
    EXPECT_EQ(values<double>(part(set, {0, 3, 0, 1, 1, 2})),
              (std::vector<double>{1, 0, 3, 0, 5, 0}));
    EXPECT_LT(resident_memory(), before + much);
}

TEST(Memory, IsGivenBack) {
    const auto samples = static_cast<std::int64_t>(physical_memory() / 8 * 5 / sizeof(double));
    for (int i = 0; i < 3; ++i) {
        const data_store store;
        EXPECT_NO_THROW(store.root().create_set("s", shape({1, 1, samples}), data_type::float64));
    }
}

TEST(Memory, OfTheMachineIsNotOutgrownByOneSet) {
    const data_store store;
    const auto count = static_cast<std::int64_t>(physical_memory() / sizeof(double) + 1);
    auto root = store.root();
    EXPECT_THROW(root.create_set("s", shape({count}), data_type::float64), std::bad_alloc);
    EXPECT_THROW(root.create_attribute("a", shape({count}), data_type::float64), std::bad_alloc);
    EXPECT_THROW(root.create_set("t", shape({count}), data_type::string), std::bad_alloc);
    EXPECT_TRUE(root.list_set_children_name().empty());
    EXPECT_TRUE(root.list_attributes_name().empty());
}

TEST(Memory, OfTheMachineIsNotOutgrownByManySets) {
    const data_store store;
    const auto count = static_cast<std::int64_t>(physical_memory() / 8 * 3 / sizeof(double));
    auto root = store.root();
    root.create_set("a", shape({count}), data_type::float64);
    root.create_set("b", shape({count}), data_type::float64);
    EXPECT_THROW(root.create_set("c", shape({count}), data_type::float64), std::bad_alloc);
    root.delete_set("a");
    EXPECT_NO_THROW(root.create_set("c", shape({count}), data_type::float64));
}

TEST(Memory, OfTheMachineIsNotOutgrownByAnAppendedElement) {
    const data_store store;
    const auto count = static_cast<std::int64_t>(physical_memory() / 2);
    const auto set = store.root().create_set("s", shape({count}), data_type::uint8);
    const std::uint8_t element = 1;
    EXPECT_THROW(static_cast<void>(append_elements(set, &element, 1, data_type::uint8)),
                 std::bad_alloc);
    EXPECT_EQ(set.shape(false), shape({count}));
}

TEST(Memory, AppendedEmptyTextTakesNone) {
    const data_store store;
    const auto before = resident_memory();
    const auto count = static_cast<std::int64_t>(physical_memory() / 2 / sizeof(std::string));
    const auto set = store.root().create_set("s", shape({count}), data_type::string);
    const char* empty = "";
    EXPECT_TRUE(append_elements(set, &empty, 1, data_type::string));
    EXPECT_EQ(set.shape(false), shape({count + 1}));
    EXPECT_LT(resident_memory(), before + much);
}

TEST(Memory, SetOfManyEmptyTextsTakesNone) {
    const data_store store;
    const auto before = resident_memory();
    const auto count = static_cast<std::int64_t>(physical_memory() / 2 / sizeof(std::string));
    const auto set = store.root().create_set("s", shape({count}), data_type::string);
    EXPECT_EQ(strata_test::texts(part(set, {static_cast<std::uint64_t>(count) - 1, 1})),
              std::vector<std::string>{""});
    EXPECT_LT(resident_memory(), before + much);
}

TEST(Memory, SetOfAbsurdlyManyChannelsIsHeldAsOne) {
    const data_store store;
    constexpr std::int64_t channels = 100'000'000;
    const auto before = resident_memory();
    const auto set = store.root().create_set("s", shape({1, channels, 1}), data_type::float64);
    strata_test::give<double>(part(set, {0, 1, channels - 1, 1, 0, 1}), {4.0});
    EXPECT_EQ(values<double>(part(set, {0, 1, channels - 2, 2, 0, 1})),
              (std::vector<double>{0, 4}));
    EXPECT_LT(resident_memory(), before + much);
}

} // namespace
