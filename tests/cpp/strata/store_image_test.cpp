#include <strata/access/same_set.hpp>
#include <strata/access/store_image.hpp>

#include <cstring>
#include <span>

#include "platform/strata/src/image/image_format.hpp"
#include "tests/cpp/strata/support/buffers.hpp"

namespace {

using strata::data_store;
using strata::data_type;
using strata::read_image;
using strata_test::buffers;
using strata_test::counting_set;
using strata_test::give;
using strata_test::give_texts;
using strata_test::refusal;
using strata_test::scalar;
using strata_test::shape;
using strata_test::texts;
using strata_test::values;
using strata_test::whole;

using image = std::vector<std::byte>;
using doubles = std::vector<double>;
using names = std::vector<std::string>;

image image_of(const data_store& store) {
    image bytes(strata::image_size(store));
    strata::write_image(store, bytes);
    return bytes;
}

data_store read_again(const data_store& store) { return read_image(image_of(store)); }

std::string refusal_of(const image& bytes) {
    return refusal([&] { static_cast<void>(read_image(bytes)); });
}

TEST(StoreImage, KeepsGroupsSetsAndAttributesInOrder) {
    const data_store store;
    auto root = store.root();
    root.create_group("b/deep");
    root.create_group("a").create_attribute("Text", scalar(), data_type::string).write("caf\xE9");
    give<float>(root.create_attribute("Single", scalar(), data_type::float32), {0.1F});
    give_texts(root.create_attribute("Texts", shape({2, 2}), data_type::string),
               {"", "b", "c", ""});
    give_texts(root.create_attribute("Empty", shape({0}), data_type::string), {});
    give<std::int16_t>(root.create_attribute("Grid", shape({2, 3}), data_type::int16),
                       {1, 2, 3, 4, 5, 6});
    auto set = counting_set(root, "a/s", {2, 3});
    set.create_attribute("Unit", scalar(), data_type::string).write("mm");
    give_texts(whole(root.create_set("a/t", shape({2}), data_type::string)), {"x", "y"});

    const auto found = read_again(store).root();
    EXPECT_EQ(found.list_group_children_name(), (names{"b", "a"}));
    EXPECT_TRUE(found.exists_group("b/deep"));
    EXPECT_EQ(texts(found.retrieve_attribute("a/Text")), names{"caf\xE9"});
    EXPECT_EQ(found.list_attributes_name(), (names{"Single", "Texts", "Empty", "Grid"}));
    EXPECT_EQ(values<float>(found.retrieve_attribute("Single")), std::vector{0.1F});
    EXPECT_EQ(found.retrieve_attribute("Texts").shape(), shape({2, 2}));
    EXPECT_EQ(texts(found.retrieve_attribute("Texts")), (names{"", "b", "c", ""}));
    EXPECT_EQ(found.retrieve_attribute("Empty").shape(), shape({0}));
    EXPECT_EQ(values<std::int16_t>(found.retrieve_attribute("Grid")),
              (std::vector<std::int16_t>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(found.retrieve_group("a").list_set_children_name(), (names{"s", "t"}));
    EXPECT_EQ(found.retrieve_set("a/s").shape(false), shape({2, 3}));
    EXPECT_EQ(values<double>(whole(found.retrieve_set("a/s"))), (doubles{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(texts(found.retrieve_set("a/s").retrieve_attribute("Unit")), names{"mm"});
    EXPECT_EQ(texts(whole(found.retrieve_set("a/t"))), (names{"x", "y"}));
}

TEST(StoreImage, KeepsEveryBitOfNumbers) {
    const data_store store;
    const std::vector<std::uint64_t> bits = {0,
                                             1,
                                             0x8000000000000000U,
                                             0x7FF0000000000000U,
                                             0x7FF8000000000001U,
                                             0xFFF0000000000001U, // a signalling NaN
                                             0x3FF0000000000001U};
    auto buffer = strata::channel_buffer::allocate(data_type::float64, bits.size(), 1);
    std::memcpy(buffer.front().data(), bits.data(), bits.size() * sizeof bits.front());
    static_cast<void>(create_channel_set(store.root(), "bits", 1, bits.size(), buffer));
    const auto found = strata::share_channel(read_again(store).root().retrieve_set("bits"), 0);
    EXPECT_EQ(std::memcmp(found.data(), bits.data(), bits.size() * sizeof bits.front()), 0);
}

TEST(StoreImage, KeepsElementsAsCompactAsTheyAre) {
    const data_store store;
    auto rows = buffers<std::int16_t>({{1, 2, 3}, {4, 5, 6}});
    rows[1].set_scaling(1, 0.5);
    static_cast<void>(create_channel_set(store.root(), "s", 1, 3, std::move(rows)));
    const auto set = read_again(store).root().retrieve_set("s");
    EXPECT_EQ(values<double>(whole(set)), (doubles{1, 2, 3, 1.5, 2, 2.5}));
    EXPECT_EQ(strata::share_channel(set, 1).stored(), data_type::int16);
    EXPECT_EQ(strata::share_channel(set, 1).offset(), 1.0);
    EXPECT_EQ(strata::share_channel(set, 1).factor(), 0.5);
}

TEST(StoreImage, KeepsTypesAboveAHundred) {
    const data_store store;
    auto root = store.root();
    constexpr auto wide = static_cast<data_type>(111);
    root.create_set("s", shape({2}), wide);
    root.create_attribute("scalar", scalar(), wide);
    root.create_attribute("array", shape({2}), wide);
    root.create_attribute("none", shape({2}), static_cast<data_type>(200));
    const auto found = read_again(store).root();
    EXPECT_EQ(found.retrieve_set("s").type(), wide);
    EXPECT_EQ(found.retrieve_attribute("scalar").type(), wide);
    EXPECT_EQ(found.retrieve_attribute("array").type(), wide);
    EXPECT_EQ(found.retrieve_attribute("none").type(), static_cast<data_type>(200));
}

TEST(StoreImage, KeepsWhatIsSharedTogether) {
    const data_store store;
    auto root = store.root();
    const auto set = counting_set(root, "s", {1, 1, 1000});
    ASSERT_TRUE(root.create_hard_link_internal("link", &set));
    static_cast<void>(strata_test::share_as(root, "other", set, 0));
    EXPECT_LT(strata::image_size(store), 1000 * sizeof(double) + 500);

    const auto found = read_again(store).root();
    EXPECT_TRUE(same_set(found.retrieve_set("s"), found.retrieve_set("link")));
    EXPECT_FALSE(same_set(found.retrieve_set("s"), found.retrieve_set("other")));
    EXPECT_EQ(strata::share_channel(found.retrieve_set("s"), 0).data(),
              strata::share_channel(found.retrieve_set("other"), 0).data());
    give<double>(whole(found.retrieve_set("other")), doubles(1000, 1));
    EXPECT_EQ(values<double>(whole(found.retrieve_set("s")))[5], 5);
}

TEST(StoreImage, OfTheDeepestTreeIsRead) {
    const data_store store;
    std::string path = "g";
    for (int depth = 1; depth < 100; ++depth)
        path += "/g";
    store.root().create_group(path);
    EXPECT_TRUE(read_again(store).root().exists_group(path));
}

TEST(StoreImage, OfForeignBytesIsRefused) {
    constexpr auto none = "These bytes are no image of a store";
    EXPECT_EQ(refusal_of({}), none);
    EXPECT_EQ(refusal_of(image(31)), none);
    EXPECT_EQ(refusal_of(image(1000)), none);
    auto other_version = image_of({});
    other_version[8] = std::byte{2};
    EXPECT_EQ(refusal_of(other_version), "The image has version 2, not 1");
    auto other_order = image_of({});
    std::swap(other_order[12], other_order[15]);
    EXPECT_EQ(refusal_of(other_order),
              "The image was made by a machine with another order of bytes");
}

TEST(StoreImage, IsRefusedWhereverItIsCutOrChanged) {
    constexpr auto damaged =
        "The image of the store is damaged: its bytes are not those it was made of";
    const data_store store;
    counting_set(store.root(), "s", {1, 2, 3});
    store.root().create_attribute("a", scalar(), data_type::string).write("text");
    const auto whole_image = image_of(store);
    for (std::size_t length = 32; length < whole_image.size(); ++length)
        EXPECT_EQ(refusal_of({whole_image.begin(),
                              whole_image.begin() + static_cast<std::ptrdiff_t>(length)}),
                  damaged);
    for (std::size_t i = 16; i < whole_image.size(); ++i) {
        auto changed = whole_image;
        changed[i] ^= std::byte{0x10};
        EXPECT_EQ(refusal_of(changed), damaged) << i;
    }
    auto longer = whole_image;
    longer.push_back({});
    EXPECT_EQ(refusal_of(longer), damaged);
}

/// `bytes` with a head that tells the truth about the tree, whatever that is.
image with_true_head(image bytes) {
    strata::detail::image_head head;
    const std::span tree = std::span<const std::byte>{bytes}.subspan(sizeof head);
    head.size = tree.size();
    head.digest = strata::detail::digest_of(tree);
    std::memcpy(bytes.data(), &head, sizeof head);
    return bytes;
}

/// The tree is refused, or it is one: everything in it can be read.
void expect_tree_or_refusal(const image& bytes) {
    try {
        const auto store = read_image(bytes);
        EXPECT_EQ(read_image(image_of(store)).root().list_group_children_name(),
                  store.root().list_group_children_name());
    } catch (const strata::store_error&) {
    } catch (const std::bad_alloc&) {
    }
}

data_store store_of_everything() {
    const data_store store;
    auto root = store.root();
    root.create_group("g");
    const auto set = counting_set(root, "g/s", {1, 2, 3});
    EXPECT_TRUE(root.create_hard_link_internal("l", &set));
    auto rows = buffers<std::int16_t>({{1, 2}});
    rows[0].set_scaling(1, 0.5);
    static_cast<void>(create_channel_set(root, "r", 1, 2, std::move(rows)));
    give_texts(root.create_attribute("t", shape({2}), data_type::string), {"a", "b"});
    root.create_attribute("x", scalar(), data_type::string).write("x");
    root.create_attribute("n", scalar(), data_type::int32);
    return store;
}

TEST(StoreImage, WithAnyOtherByteIsATreeOrRefused) {
    const auto whole_image = image_of(store_of_everything());
    for (std::size_t i = sizeof(strata::detail::image_head); i < whole_image.size(); ++i) {
        for (const unsigned value : {0x00U, 0x01U, 0x02U, 0x0CU, 0x7FU, 0x80U, 0xFFU}) {
            auto changed = whole_image;
            changed[i] = std::byte(value);
            expect_tree_or_refusal(with_true_head(std::move(changed)));
        }
    }
}

TEST(StoreImage, CutAnywhereIsRefused) {
    const auto whole_image = image_of(store_of_everything());
    for (auto length = sizeof(strata::detail::image_head); length < whole_image.size(); ++length) {
        const auto text = refusal_of(with_true_head(
            {whole_image.begin(), whole_image.begin() + static_cast<std::ptrdiff_t>(length)}));
        EXPECT_EQ(text.find("The image of the store is damaged: "), 0U) << length << text;
    }
}

} // namespace
