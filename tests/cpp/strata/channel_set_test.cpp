#include <cmath>

#include <gtest/gtest.h>

#include <strata/store_error.hpp>

#include "tests/cpp/strata/support/buffers.hpp"

namespace {

using strata::channel_buffer;
using strata::create_channel_set;
using strata::data_store;
using strata::data_type;
using strata_test::buffer;
using strata_test::buffers;
using strata_test::part;
using strata_test::refusal;
using strata_test::shape;
using strata_test::values;
using strata_test::whole;

using doubles = std::vector<double>;

TEST(ChannelSet, HasARowForEachChannel) {
    const data_store store;
    const auto set = create_channel_set(
        store.root(), "s", 2, 3, buffers<double>({{0, 1, 2, 10, 11, 12}, {5, 6, 7, 15, 16, 17}}));
    EXPECT_EQ(set.type(), data_type::float64);
    EXPECT_EQ(set.shape(false), shape({2, 2, 3}));
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 5, 6, 7, 10, 11, 12, 15, 16, 17}));
}

TEST(ChannelSet, MayHaveNoChannels) {
    const data_store store;
    const auto set = create_channel_set(store.root(), "s", 3, 100, {});
    EXPECT_EQ(set.shape(false), shape({3, 0, 100}));
    EXPECT_TRUE(whole(set).read_value(nullptr, data_type::float64));
}

TEST(ChannelSet, MayHaveNoSamples) {
    const data_store store;
    const auto set = create_channel_set(store.root(), "s", 3, 0,
                                        channel_buffer::allocate(data_type::float32, 0, 2));
    EXPECT_EQ(set.shape(false), shape({3, 2, 0}));
}

TEST(ChannelSet, WidensSingles) {
    const data_store store;
    const auto set =
        create_channel_set(store.root(), "s", 1, 3, {buffer<float>({0.1F, -0.0F, NAN})});
    const auto read = values<double>(whole(set));
    EXPECT_EQ(read[0], static_cast<double>(0.1F));
    EXPECT_TRUE(std::signbit(read[1]));
    EXPECT_TRUE(std::isnan(read[2]));
}

TEST(ChannelSet, ScalesSingles) {
    const data_store store;
    auto channel = buffer<float>({10, 20.5F});
    channel.set_scaling(0.5, 0.1);
    const auto set = create_channel_set(store.root(), "s", 1, 2, {channel});
    EXPECT_EQ(values<double>(whole(set)), (doubles{(10 - 0.5) * 0.1, (20.5 - 0.5) * 0.1}));
}

TEST(ChannelSet, ScalesShortsInDoublePrecision) {
    const data_store store;
    auto channel = buffer<std::int16_t>({-32768, 0, 32767});
    channel.set_scaling(2048.0, 0.0048828125);
    const auto set = create_channel_set(store.root(), "s", 1, 3, {channel});
    EXPECT_EQ(values<double>(whole(set)),
              (doubles{(-32768 - 2048.0) * 0.0048828125, -2048.0 * 0.0048828125,
                       (32767 - 2048.0) * 0.0048828125}));
}

TEST(ChannelSet, ScalesOtherNumbersToo) {
    const data_store store;
    auto channel = buffer<std::uint32_t>({4000000000U, 2});
    channel.set_scaling(1.0, 2.0);
    const auto set = create_channel_set(store.root(), "s", 1, 2, {channel});
    EXPECT_EQ(values<double>(whole(set)), (doubles{7999999998.0, 2.0}));
}

TEST(ChannelSet, ScaledElementsAreReadAsEveryKind) {
    const data_store store;
    auto elements = strata_test::counting<std::int16_t>(1000);
    auto channel = buffer<std::int16_t>(elements);
    channel.set_scaling(0.0, 0.5);
    const auto set = create_channel_set(store.root(), "s", 1, 1000, {channel});
    const auto singles = values<float>(whole(set));
    const auto bytes = values<std::uint8_t>(whole(set));
    for (std::size_t i = 0; i < 1000; ++i) {
        ASSERT_EQ(singles[i], static_cast<float>(i) / 2);
        ASSERT_EQ(bytes[i], std::min<std::size_t>(i / 2, 255));
    }
}

TEST(ChannelSet, PartOfScaledElementsIsRead) {
    const data_store store;
    auto channel = buffer<std::int16_t>({0, 1, 2, 3, 10, 11, 12, 13});
    channel.set_scaling(0.0, 2.0);
    const auto set = create_channel_set(store.root(), "s", 2, 4, {channel});
    EXPECT_EQ(values<double>(part(set, {1, 1, 0, 1, 1, 2})), (doubles{22, 24}));
}

TEST(ChannelSet, WritingIntoCompactElementsKeepsTheOthers) {
    const data_store store;
    auto channel = buffer<std::int16_t>({0, 1, 2, 3});
    channel.set_scaling(0.0, 0.1);
    const auto set = create_channel_set(store.root(), "s", 1, 4, {channel});
    strata_test::give<double>(part(set, {0, 1, 0, 1, 1, 2}), {1e-9, 1e9});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1e-9, 1e9, 3 * 0.1}));
}

TEST(ChannelSet, WritingIntoSinglesStoresDoubles) {
    const data_store store;
    const auto set = create_channel_set(store.root(), "s", 1, 2, {buffer<float>({1, 2})});
    strata_test::give<double>(part(set, {0, 1, 0, 1, 0, 1}), {0.1});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0.1, 2}));
}

TEST(ChannelSet, OfCompactElementsIsResized) {
    const data_store store;
    auto channel = buffer<std::int16_t>({2, 4});
    channel.set_scaling(1.0, 10.0);
    const auto set = create_channel_set(store.root(), "s", 1, 2, {channel});
    strata_test::resize(set, {1, 1, 3});
    EXPECT_EQ(values<double>(whole(set)), (doubles{10, 30, 0}));
    strata_test::resize(set, {1, 2, 3});
    EXPECT_EQ(values<double>(whole(set)), (doubles{10, 30, 0, 0, 0, 0}));
}

TEST(ChannelSet, RefusesBuffersOfAnotherSize) {
    const data_store store;
    EXPECT_EQ(refusal([&] {
                  create_channel_set(store.root(), "s", 3, 2, buffers<float>({{1, 2, 3, 4, 5}}));
              }),
              "Channel buffer 0 has 5 elements, not 6");
    EXPECT_FALSE(store.root().exists_set("s"));
}

TEST(ChannelSet, RefusesEmptyBuffers) {
    const data_store store;
    EXPECT_EQ(refusal([&] { create_channel_set(store.root(), "s", 1, 0, {channel_buffer{}}); }),
              "A channel buffer holds numbers");
    auto moved = buffer<float>({1});
    const auto kept = std::move(moved);
    std::vector<channel_buffer> given{
        moved}; // NOLINT(bugprone-use-after-move): what is left is tested
    EXPECT_EQ(refusal([&] { create_channel_set(store.root(), "s", 1, 1, given); }),
              "A channel buffer holds numbers");
}

TEST(ChannelSet, RefusesATakenName) {
    const data_store store;
    store.root().create_group("s");
    EXPECT_EQ(refusal([&] { create_channel_set(store.root(), "s", 1, 1, {buffer<float>({1})}); }),
              "The group 's' already exists");
}

TEST(ChannelBuffer, HoldsNumbersOnly) {
    EXPECT_EQ(refusal([] { static_cast<void>(channel_buffer::allocate(data_type::string, 1, 1)); }),
              "A channel buffer holds numbers");
}

TEST(ChannelBuffer, OfTooManyElementsIsOutOfMemory) {
    constexpr auto many = std::uint64_t{1} << 62;
    EXPECT_THROW(static_cast<void>(channel_buffer::allocate(data_type::float64, many, 1)),
                 std::bad_alloc);
    EXPECT_THROW(static_cast<void>(channel_buffer::allocate(data_type::float64, 8, many)),
                 std::bad_alloc);
}

TEST(ChannelBuffer, RowsDoNotOverlapInALargeBlock) {
    constexpr std::uint64_t elements = 300'001;
    auto rows = channel_buffer::allocate(data_type::float32, elements, 5);
    for (std::size_t i = 0; i < rows.size(); ++i)
        std::memset(rows[i].data(), static_cast<int>(i + 1), elements * 4);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].data()[0], static_cast<std::byte>(i + 1));
        EXPECT_EQ(rows[i].data()[elements * 4 - 1], static_cast<std::byte>(i + 1));
    }
}

TEST(RowAttribute, OfOneRowIsShared) {
    const data_store store;
    const auto set = create_channel_set(store.root(), "s", 1, 2, {buffer<double>({1, 2})});
    const auto attribute = strata::create_row_attribute(set, "Residuals", buffer<float>({3, 4}));
    const auto first = strata::share_elements(attribute);
    EXPECT_EQ(first.stored(), data_type::float32);
    EXPECT_EQ(first.count(), 2U);
    EXPECT_EQ(reinterpret_cast<const float*>(first.data())[1], 4.0F);
    EXPECT_EQ(first.data(), strata::share_elements(attribute).data());
}

TEST(RowAttribute, OnlyNumbersOfOneDimensionAreSharedAsElements) {
    const data_store store;
    auto set = create_channel_set(store.root(), "s", 1, 2, {buffer<double>({1, 2})});
    const auto rows = strata::create_row_attribute(set, "Rows", buffers<float>({{3, 4}, {5, 6}}));
    EXPECT_THROW((void)strata::share_elements(rows), strata::store_error);
    const auto texts = set.create_attribute("Texts", shape({2}), data_type::string);
    EXPECT_THROW((void)strata::share_elements(texts), strata::store_error);
    EXPECT_THROW((void)strata::share_elements({}), strata::store_error);
}

} // namespace
