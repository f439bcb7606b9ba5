#include <array>
#include <cmath>

#include <strata/access/fill_matrix.hpp>
#include <strata/access/strided_read.hpp>

#include "tests/cpp/strata/support/buffers.hpp"

namespace {

using strata::data_store;
using strata::data_type;
using strata::fill_matrix;
using strata::matrix_columns;
using strata::read_strided;
using strata_test::buffer;
using strata_test::counting_set;
using strata_test::shape;

using doubles = std::vector<double>;

TEST(StridedRead, TakesOneComponentOfOneChannel) {
    const data_store store;
    const auto set =
        counting_set(store.root(), "s", {3, 2, 4}); // component * 8 + channel * 4 + sample
    doubles to(6, -1.0);
    EXPECT_TRUE(read_strided(set, 1, 2, 1, 3, to.data(), 2));
    EXPECT_EQ(to, (doubles{21, -1, 22, -1, 23, -1}));
}

TEST(StridedRead, TakesSamplesAlone) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {5});
    doubles to(2);
    EXPECT_TRUE(read_strided(set, 0, 0, 3, 2, to.data(), 1));
    EXPECT_EQ(to, (doubles{3, 4}));
}

TEST(StridedRead, WritesBackwards) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3});
    doubles to(3);
    EXPECT_TRUE(read_strided(set, 0, 0, 0, 3, to.data() + 2, -1));
    EXPECT_EQ(to, (doubles{2, 1, 0}));
}

template <typename Kind> class StridedReadOf : public testing::Test {};
using kinds =
    testing::Types<char, std::int8_t, std::uint8_t, std::int16_t, std::uint16_t, std::int32_t,
                   std::uint32_t, std::int64_t, std::uint64_t, float, double>;
TYPED_TEST_SUITE(StridedReadOf, kinds);

TYPED_TEST(StridedReadOf, EveryKindGivesDoubles) {
    const data_store store;
    const auto set =
        store.root().create_set("s", shape({1, 1, 2}), strata_test::type_of<TypeParam>());
    strata_test::give<TypeParam>(strata_test::whole(set), {0, 1});
    doubles to(2);
    EXPECT_TRUE(read_strided(set, 0, 0, 0, 2, to.data(), 1));
    EXPECT_EQ(to, (doubles{0, 1}));
}

TEST(StridedRead, ScalesCompactElements) {
    const data_store store;
    auto channel = buffer<std::int16_t>({1, 2, 3, 4});
    channel.set_scaling(1.0, 0.25);
    const auto set = strata::create_channel_set(store.root(), "s", 2, 2, {channel});
    doubles to(2);
    EXPECT_TRUE(read_strided(set, 0, 1, 0, 2, to.data(), 1));
    EXPECT_EQ(to, (doubles{0.5, 0.75}));
}

TEST(StridedRead, TakesAChannelOfVeryMany) {
    const data_store store;
    constexpr std::int64_t channels = 200'000;
    const auto set = counting_set(store.root(), "s", {2, channels, 2});
    doubles to(2);
    EXPECT_TRUE(read_strided(set, 3, 1, 0, 2, to.data(), 1));
    EXPECT_EQ(to, (doubles{2.0 * channels + 6, 2.0 * channels + 7}));
}

TEST(StridedRead, RefusesWhatTheSetDoesNotHave) {
    const data_store store;
    auto root = store.root();
    const auto set = counting_set(root, "s", {3, 2, 4});
    const auto flat = counting_set(root, "flat", {4});
    const auto table = counting_set(root, "table", {2, 4});
    const auto text = root.create_set("text", shape({1, 1, 4}), data_type::string);
    double to = -1.0;
    EXPECT_FALSE(read_strided(set, 2, 0, 0, 1, &to, 1));
    EXPECT_FALSE(read_strided(set, 0, 3, 0, 1, &to, 1));
    EXPECT_FALSE(read_strided(set, 0, 0, 4, 1, &to, 1));
    EXPECT_FALSE(read_strided(set, 0, 0, 3, ~std::uint64_t{0}, &to, 1));
    EXPECT_FALSE(read_strided(set, 0, 0, ~std::uint64_t{0}, 2, &to, 1));
    EXPECT_FALSE(read_strided(flat, 1, 0, 0, 1, &to, 1));
    EXPECT_FALSE(read_strided(flat, 0, 1, 0, 1, &to, 1));
    EXPECT_FALSE(read_strided(table, 0, 0, 0, 1, &to, 1));
    EXPECT_FALSE(read_strided(text, 0, 0, 0, 1, &to, 1));
    EXPECT_FALSE(read_strided({}, 0, 0, 0, 1, &to, 1));
    EXPECT_EQ(to, -1.0);
}

TEST(FillMatrix, PutsComponentsSideBySide) {
    const data_store store;
    const auto first = counting_set(store.root(), "a", {3, 1, 2});
    const auto second = counting_set(store.root(), "b", {1, 1, 2});
    const std::array columns{matrix_columns{second, 0, 3}, matrix_columns{first, 0, 0}};
    doubles matrix(8);
    EXPECT_TRUE(fill_matrix(columns, 2, 4, matrix.data()));
    EXPECT_EQ(matrix, (doubles{0, 2, 4, 0, 1, 3, 5, 1}));
}

TEST(FillMatrix, FillsMoreRowsThanATile) {
    const data_store store;
    constexpr std::int64_t samples = 70'001;
    const auto set = counting_set(store.root(), "a", {2, 3, samples});
    const std::array columns{matrix_columns{set, 2, 0}, matrix_columns{set, 0, 2}};
    doubles matrix(static_cast<std::size_t>(samples) * 4);
    ASSERT_TRUE(fill_matrix(columns, samples, 4, matrix.data()));
    for (std::int64_t i = 0; i < samples; ++i) {
        const auto* row = matrix.data() + i * 4;
        ASSERT_EQ(row[0], static_cast<double>(2 * samples + i));
        ASSERT_EQ(row[1], static_cast<double>(5 * samples + i));
        ASSERT_EQ(row[2], static_cast<double>(i));
        ASSERT_EQ(row[3], static_cast<double>(3 * samples + i));
    }
}

TEST(FillMatrix, LeavesColumnsOfNobodyWithoutValue) {
    const data_store store;
    const auto set = counting_set(store.root(), "a", {1, 1, 1000});
    const std::array columns{matrix_columns{set, 0, 1}};
    doubles matrix(3000);
    ASSERT_TRUE(fill_matrix(columns, 1000, 3, matrix.data()));
    for (std::size_t i = 0; i < 1000; ++i) {
        ASSERT_TRUE(std::isnan(matrix[3 * i]));
        ASSERT_EQ(matrix[3 * i + 1], static_cast<double>(i));
        ASSERT_TRUE(std::isnan(matrix[3 * i + 2]));
    }
}

TEST(FillMatrix, TakesTheFirstSamplesOfLongerChannels) {
    const data_store store;
    const auto set = counting_set(store.root(), "a", {2, 1, 5});
    const std::array columns{matrix_columns{set, 0, 0}};
    doubles matrix(4);
    EXPECT_TRUE(fill_matrix(columns, 2, 2, matrix.data()));
    EXPECT_EQ(matrix, (doubles{0, 5, 1, 6}));
}

TEST(FillMatrix, MayBeEmpty) {
    const data_store store;
    const auto set = counting_set(store.root(), "a", {2, 1, 5});
    const std::array columns{matrix_columns{set, 0, 0}};
    double untouched = 1.0;
    EXPECT_TRUE(fill_matrix(columns, 0, 2, &untouched));
    EXPECT_TRUE(fill_matrix({}, 5, 0, &untouched));
    EXPECT_EQ(untouched, 1.0);
}

TEST(FillMatrix, RefusesWhatDoesNotFit) {
    const data_store store;
    const auto set = counting_set(store.root(), "a", {2, 1, 5});
    const auto refused = [](const matrix_columns& columns, std::uint64_t samples,
                            std::uint64_t width) {
        doubles matrix(samples * width, -1.0);
        const bool filled = fill_matrix(std::array{columns}, samples, width, matrix.data());
        return !filled && matrix == doubles(samples * width, -1.0);
    };
    EXPECT_TRUE(refused({set, 0, 0}, 6, 2));
    EXPECT_TRUE(refused({set, 0, 1}, 5, 2));
    EXPECT_TRUE(refused({set, 0, ~std::uint64_t{0}}, 5, 2));
    EXPECT_TRUE(refused({set, 1, 0}, 5, 2));
    EXPECT_TRUE(refused({{}, 0, 0}, 5, 2));
}

} // namespace
