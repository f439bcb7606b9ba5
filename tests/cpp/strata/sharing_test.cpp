#include "tests/cpp/strata/support/buffers.hpp"

namespace {

using strata::channel_buffer;
using strata::create_channel_set;
using strata::data_store;
using strata::data_type;
using strata::share_channel;
using strata::share_row;
using strata_test::buffer;
using strata_test::buffers;
using strata_test::give;
using strata_test::part;
using strata_test::refusal;
using strata_test::shape;
using strata_test::share_as;
using strata_test::values;
using strata_test::whole;

using doubles = std::vector<double>;

strata::data_set two_channels(const data_store& store) {
    return create_channel_set(store.root(), "source", 1, 3,
                              buffers<double>({{0, 1, 2}, {10, 11, 12}}));
}

TEST(SharedChannel, HasTheSameElementsInMemory) {
    const data_store store;
    const auto source = two_channels(store);
    const auto copy = share_as(store.root(), "copy", source, 1);
    EXPECT_EQ(share_channel(source, 1).data(), share_channel(copy, 0).data());
    EXPECT_EQ(values<double>(whole(copy)), (doubles{10, 11, 12}));
}

TEST(SharedChannel, WritingTheCopyLeavesTheSource) {
    const data_store store;
    const auto source = two_channels(store);
    const auto copy = share_as(store.root(), "copy", source, 1);
    give<double>(part(copy, {0, 1, 0, 1, 1, 1}), {-1});
    EXPECT_EQ(values<double>(whole(copy)), (doubles{10, -1, 12}));
    EXPECT_EQ(values<double>(whole(source)), (doubles{0, 1, 2, 10, 11, 12}));
}

TEST(SharedChannel, WritingTheSourceLeavesTheCopy) {
    const data_store store;
    const auto source = two_channels(store);
    const auto copy = share_as(store.root(), "copy", source, 1);
    give<double>(whole(source), {9, 9, 9, 9, 9, 9});
    EXPECT_EQ(values<double>(whole(copy)), (doubles{10, 11, 12}));
    EXPECT_EQ(values<double>(whole(source)), doubles(6, 9.0));
}

TEST(SharedChannel, WritingOneChannelKeepsTheOthersShared) {
    const data_store store;
    const auto source = two_channels(store);
    const auto first = share_as(store.root(), "first", source, 0);
    const auto second = share_as(store.root(), "second", source, 1);
    give<double>(part(source, {0, 1, 0, 1, 0, 1}), {7});
    EXPECT_NE(share_channel(source, 0).data(), share_channel(first, 0).data());
    EXPECT_EQ(share_channel(source, 1).data(), share_channel(second, 0).data());
}

TEST(SharedChannel, WrittenTwiceTakesElementsOnce) {
    const data_store store;
    const auto source = two_channels(store);
    const auto copy = share_as(store.root(), "copy", source, 0);
    give<double>(whole(copy), {1, 2, 3});
    const auto* own = share_channel(copy, 0).data();
    give<double>(whole(copy), {4, 5, 6});
    EXPECT_EQ(share_channel(copy, 0).data(), own);
}

TEST(SharedChannel, FailedWriteChangesNothing) {
    const data_store store;
    const auto source = two_channels(store);
    const auto copy = share_as(store.root(), "copy", source, 0);
    const char* text = "5";
    EXPECT_FALSE(part(copy, {0, 1, 0, 1, 0, 1}).write_value(&text, data_type::string));
    EXPECT_EQ(share_channel(source, 0).data(), share_channel(copy, 0).data());
}

TEST(SharedChannel, OutlivesTheSource) {
    const data_store store;
    strata::data_set copy;
    {
        const auto source = two_channels(store);
        copy = share_as(store.root(), "copy", source, 1);
        store.root().delete_set("source");
    }
    EXPECT_EQ(values<double>(whole(copy)), (doubles{10, 11, 12}));
}

TEST(SharedChannel, ResizingTheSourceLeavesTheCopy) {
    const data_store store;
    const auto source = two_channels(store);
    const auto copy = share_as(store.root(), "copy", source, 0);
    strata_test::resize(source, {1, 2, 1});
    EXPECT_EQ(values<double>(whole(copy)), (doubles{0, 1, 2}));
    strata_test::resize(copy, {1, 1, 4});
    EXPECT_EQ(values<double>(whole(source)), (doubles{0, 10}));
}

TEST(SharedChannel, KeepsItsScale) {
    const data_store store;
    auto channels = buffers<std::int16_t>({{1, 2}, {3, 4}});
    channels[1].set_scaling(1.0, 0.5);
    const auto source = create_channel_set(store.root(), "source", 1, 2, channels);
    const auto copy = share_as(store.root(), "copy", source, 1);
    EXPECT_EQ(values<double>(whole(copy)), (doubles{1, 1.5}));
    EXPECT_EQ(share_channel(copy, 0).stored(), data_type::int16);
}

TEST(SharedChannel, OfACreatedSetIsSharedToo) {
    const data_store store;
    const auto source = strata_test::counting_set(store.root(), "source", {2, 2, 2});
    const auto copy = share_as(store.root(), "copy", source, 1);
    EXPECT_EQ(values<double>(whole(copy)), (doubles{2, 3, 6, 7}));
    EXPECT_EQ(share_channel(source, 1).data(), share_channel(copy, 0).data());
}

TEST(SharedChannel, OfASetWithVeryManyChannelsIsACopy) {
    const data_store store;
    constexpr std::int64_t channels = 200'000;
    const auto source = strata_test::counting_set(store.root(), "source", {2, channels, 1});
    const auto copy = share_as(store.root(), "copy", source, 7);
    EXPECT_EQ(values<double>(whole(copy)), (doubles{7, channels + 7}));
}

TEST(SharedChannel, ThatDoesNotExistIsRefused) {
    const data_store store;
    const auto source = two_channels(store);
    const auto flat = strata_test::counting_set(store.root(), "flat", {3});
    EXPECT_EQ(refusal([&] { static_cast<void>(share_channel(source, 2)); }),
              "There is no channel or row 2");
    EXPECT_EQ(refusal([&] { static_cast<void>(share_channel(flat, 0)); }),
              "There is no channel or row 0");
    EXPECT_EQ(refusal([&] { static_cast<void>(share_channel({}, 0)); }),
              "This handle denotes no data set");
}

TEST(RowAttribute, HasARowForEachBuffer) {
    const data_store store;
    auto set = two_channels(store);
    const auto rows =
        strata::create_row_attribute(set, "Residuals", buffers<float>({{0.5F, 1}, {2, 3}, {4, 5}}));
    EXPECT_EQ(rows.type(), data_type::float32);
    EXPECT_EQ(rows.shape(), shape({3, 2}));
    EXPECT_EQ(values<float>(rows), (std::vector<float>{0.5F, 1, 2, 3, 4, 5}));
    EXPECT_EQ(set.list_attributes_name(), std::vector<std::string>{"Residuals"});
}

TEST(RowAttribute, OfOneRowHasOneDimension) {
    const data_store store;
    auto set = two_channels(store);
    const auto source =
        strata::create_row_attribute(set, "Residuals", buffers<float>({{1, 2}, {3, 4}}));
    const auto row = strata::create_row_attribute(set, "Residual", share_row(source, 1));
    EXPECT_EQ(row.shape(), shape({2}));
    EXPECT_EQ(values<float>(row), (std::vector<float>{3, 4}));
}

TEST(RowAttribute, SharedRowIsIndependent) {
    const data_store store;
    auto set = two_channels(store);
    const auto source =
        strata::create_row_attribute(set, "Residuals", buffers<float>({{1, 2}, {3, 4}}));
    const auto row = strata::create_row_attribute(set, "Residual", share_row(source, 0));
    EXPECT_EQ(share_row(source, 0).data(), share_row(source, 0).data());
    give<float>(row, {8, 9});
    EXPECT_EQ(values<float>(source), (std::vector<float>{1, 2, 3, 4}));
    give<float>(source, {0, 0, 0, 0});
    EXPECT_EQ(values<float>(row), (std::vector<float>{8, 9}));
}

TEST(RowAttribute, RowOfAnyOtherAttributeIsACopy) {
    const data_store store;
    auto set = two_channels(store);
    auto plain = set.create_attribute("a", shape({2, 3}), data_type::int32);
    give<std::int32_t>(plain, {0, 1, 2, 3, 4, 5});
    const auto row = strata::create_row_attribute(set, "b", share_row(plain, 1));
    EXPECT_EQ(values<std::int32_t>(row), (std::vector<std::int32_t>{3, 4, 5}));
}

TEST(RowAttribute, RefusesWhatHasNoRows) {
    const data_store store;
    auto set = two_channels(store);
    auto flat = set.create_attribute("flat", shape({2}), data_type::int32);
    auto text = set.create_attribute("text", shape({2, 1}), data_type::string);
    EXPECT_EQ(refusal([&] { static_cast<void>(share_row(flat, 0)); }),
              "There is no channel or row 0");
    EXPECT_EQ(refusal([&] { static_cast<void>(share_row(text, 0)); }),
              "A channel buffer holds numbers");
    EXPECT_EQ(refusal([&] { static_cast<void>(share_row({}, 0)); }),
              "This handle denotes no attribute");
}

TEST(RowAttribute, RefusesRowsThatDiffer) {
    const data_store store;
    auto set = two_channels(store);
    const auto text = "The rows of an attribute are one row at least, of one type, and not scaled";
    auto scaled = buffer<float>({1, 2});
    scaled.set_scaling(0.0, 2.0);
    const std::vector mixed{buffer<float>({1, 2}), buffer<double>({1, 2})};
    EXPECT_EQ(refusal([&] { create_row_attribute(set, "a", std::vector<channel_buffer>{}); }),
              text);
    EXPECT_EQ(refusal([&] { create_row_attribute(set, "a", scaled); }), text);
    EXPECT_EQ(refusal([&] { create_row_attribute(set, "a", mixed); }), text);
    const std::vector uneven{buffer<float>({1, 2}), buffer<float>({1})};
    EXPECT_EQ(refusal([&] { create_row_attribute(set, "a", uneven); }),
              "Channel buffer 1 has 1 elements, not 2");
    EXPECT_TRUE(set.list_attributes_name().empty());
}

} // namespace
