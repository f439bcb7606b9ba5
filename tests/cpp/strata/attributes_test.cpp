#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_attribute;
using strata::data_store;
using strata::data_type;
using strata_test::give;
using strata_test::give_texts;
using strata_test::refusal;
using strata_test::scalar;
using strata_test::shape;
using strata_test::texts;
using strata_test::values;

using names = std::vector<std::string>;

TEST(Attributes, StartAsZeroOrEmpty) {
    const data_store store;
    auto root = store.root();
    EXPECT_EQ(values<double>(root.create_attribute("a", scalar(), data_type::float64)),
              std::vector<double>{0.0});
    EXPECT_EQ(texts(root.create_attribute("b", scalar(), data_type::string)), names{""});
    EXPECT_EQ(values<float>(root.create_attribute("c", shape({2}), data_type::float32)),
              (std::vector<float>{0, 0}));
    EXPECT_EQ(texts(root.create_attribute("d", shape({2}), data_type::string)), (names{"", ""}));
}

TEST(Attributes, KnowTheirNameTypeAndShape) {
    const data_store store;
    const auto attribute =
        store.root().create_attribute("CORNERS", shape({2, 4, 3}), data_type::float32);
    EXPECT_TRUE(attribute);
    EXPECT_EQ(attribute.name(), "CORNERS");
    EXPECT_EQ(attribute.type(), data_type::float32);
    EXPECT_EQ(attribute.shape(), shape({2, 4, 3}));
    EXPECT_EQ(store.root().create_attribute("one", scalar(), data_type::int8).shape(), scalar());
}

TEST(Attributes, HundredsAreKeptAndRead) {
    const data_store store;
    const auto attribute =
        store.root().create_attribute("a", scalar(), static_cast<data_type>(106));
    give<std::int32_t>(attribute, {-7});
    EXPECT_EQ(attribute.type(), static_cast<data_type>(106));
    std::int32_t value = 0;
    EXPECT_TRUE(attribute.read_value(&value, static_cast<data_type>(106)));
    EXPECT_EQ(value, -7);
}

TEST(Attributes, FloatReadAsDoubleConverts) {
    const data_store store;
    const auto attribute = store.root().create_attribute("a", scalar(), data_type::float32);
    give<float>(attribute, {1.25F});
    EXPECT_EQ(values<double>(attribute), std::vector<double>{1.25});
}

TEST(Attributes, ShortReadAsLongConverts) {
    const data_store store;
    const auto attribute = store.root().create_attribute("a", shape({2}), data_type::int16);
    give<std::int16_t>(attribute, {-5, 300});
    EXPECT_EQ(values<std::int32_t>(attribute), (std::vector<std::int32_t>{-5, 300}));
}

TEST(Attributes, TextIsNoNumber) {
    for (const auto& extent : {scalar(), shape({1})}) {
        const data_store store;
        auto root = store.root();
        auto text = root.create_attribute("text", extent, data_type::string);
        double number = 3.0;
        EXPECT_FALSE(text.read_value(&number, data_type::float64));
        EXPECT_EQ(number, 3.0);
        EXPECT_FALSE(text.write_value(&number, data_type::float64));

        auto value = root.create_attribute("value", extent, data_type::int32);
        const char* pointer = "12";
        const auto* before = pointer;
        EXPECT_FALSE(value.read_value(&pointer, data_type::string));
        EXPECT_EQ(pointer, before);
        EXPECT_FALSE(value.write_value(&pointer, data_type::string));
        EXPECT_EQ(values<std::int32_t>(value), std::vector<std::int32_t>{0});
    }
}

TEST(Attributes, TypeWithoutElementsReadsAndWritesNothing) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", scalar(), data_type::invalid);
    std::int32_t value = 3;
    EXPECT_TRUE(attribute);
    EXPECT_FALSE(attribute.read_value(&value, data_type::int32));
    EXPECT_FALSE(attribute.write_value(&value, data_type::int32));
    EXPECT_EQ(value, 3);
}

TEST(Attributes, UnknownTypeIsNotReadInto) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", scalar(), data_type::int32);
    std::int32_t value = 3;
    EXPECT_FALSE(attribute.read_value(&value, data_type::invalid));
    EXPECT_FALSE(attribute.write_value(&value, static_cast<data_type>(200)));
    EXPECT_EQ(value, 3);
}

TEST(Attributes, TextsAreKeptVerbatim) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", shape({4}), data_type::string);
    give_texts(attribute, {"mm/s\xC2\xB2", "", nullptr,
                           "a text that is longer than what lies in a string itself"});
    EXPECT_EQ(texts(attribute), (names{"mm/s\xC2\xB2", "", "",
                                       "a text that is longer than what lies in a string itself"}));
}

TEST(Attributes, WriteReplacesASingleText) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", scalar(), data_type::string);
    attribute.write("Mocap");
    EXPECT_EQ(texts(attribute), names{"Mocap"});
    attribute.write(nullptr);
    EXPECT_EQ(texts(attribute), names{""});
}

TEST(Attributes, WriteLeavesAnythingElseAlone) {
    const data_store store;
    auto number = store.root().create_attribute("number", scalar(), data_type::int32);
    auto list = store.root().create_attribute("list", shape({1}), data_type::string);
    number.write("5");
    list.write("5");
    data_attribute{}.write("5");
    EXPECT_EQ(values<std::int32_t>(number), std::vector<std::int32_t>{0});
    EXPECT_EQ(texts(list), names{""});
}

TEST(Attributes, WithoutElementsAreReadAndWrittenAsNothing) {
    const data_store store;
    auto numbers = store.root().create_attribute("a", shape({0}), data_type::int16);
    auto list = store.root().create_attribute("b", shape({2, 0}), data_type::string);
    EXPECT_TRUE(numbers.read_value(nullptr, data_type::int32));
    EXPECT_TRUE(numbers.write_value(nullptr, data_type::int32));
    EXPECT_TRUE(list.read_value(nullptr, data_type::string));
    EXPECT_EQ(numbers.shape().element_count(), 0U);
}

TEST(Attributes, MissingOneConvertsToFalse) {
    const data_store store;
    EXPECT_FALSE(store.root().retrieve_attribute("a"));
    EXPECT_FALSE(store.root().retrieve_attribute("g/a"));
    EXPECT_FALSE(store.root().exists_attribute("g/a"));
    EXPECT_EQ(data_attribute{}.name(), "");
    EXPECT_EQ(data_attribute{}.type(), data_type::invalid);
}

TEST(Attributes, ComponentsBeforeTheNameAreGroups) {
    const data_store store;
    store.root().create_group("Format/Header");
    store.root().create_attribute("Format/Header/Gap", scalar(), data_type::int32);
    EXPECT_TRUE(store.root().exists_attribute("Format/Header/Gap"));
    EXPECT_TRUE(store.root().retrieve_group("Format/Header").exists_attribute("Gap"));
    store.root().delete_attribute("Format/Header/Gap");
    EXPECT_FALSE(store.root().exists_attribute("Format/Header/Gap"));
}

TEST(Attributes, OfSetsAreNoPaths) {
    const data_store store;
    auto set = store.root().create_set("s", shape({1}), data_type::int8);
    EXPECT_EQ(refusal([&] { set.create_attribute("a/b", scalar(), data_type::int8); }),
              "'a/b' is no name: a component is empty or where none is allowed");
    EXPECT_FALSE(set.exists_attribute("a/b"));
}

TEST(Attributes, AreNotCreatedTwiceNorWithoutAGroup) {
    const data_store store;
    store.root().create_attribute("a", scalar(), data_type::int8);
    EXPECT_EQ(refusal([&] { store.root().create_attribute("a", scalar(), data_type::int8); }),
              "The attribute 'a' already exists");
    EXPECT_EQ(refusal([&] { store.root().create_attribute("g/a", scalar(), data_type::int8); }),
              "The group of 'g/a' does not exist");
    EXPECT_EQ(refusal([&] { store.root().delete_attribute("b"); }), "There is no attribute 'b'");
}

TEST(Attributes, AreListedInOrderOfCreation) {
    const data_store store;
    auto set = store.root().create_set("s", shape({1}), data_type::int8);
    for (const auto* name : {"Unit", "Label", "Gain"})
        set.create_attribute(name, scalar(), data_type::int8);
    set.delete_attribute("Label");
    set.create_attribute("Label", scalar(), data_type::int8);
    EXPECT_EQ(set.list_attributes_name(), (names{"Unit", "Gain", "Label"}));
}

TEST(Attributes, StayReadableAfterDeletion) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", scalar(), data_type::int32);
    give<std::int32_t>(attribute, {12});
    store.root().delete_attribute("a");
    EXPECT_EQ(values<std::int32_t>(attribute), std::vector<std::int32_t>{12});
}

TEST(CopiedAttributes, HaveNameTypeShapeAndValue) {
    const data_store store;
    auto source = store.root().create_attribute("Units", shape({2}), data_type::string);
    give_texts(source, {"mm", "deg"});
    auto group = store.root().create_group("g");
    group.copy_attribute(source);
    const auto copy = group.retrieve_attribute("Units");
    EXPECT_EQ(copy.type(), data_type::string);
    EXPECT_EQ(texts(copy), (names{"mm", "deg"}));
}

TEST(CopiedAttributes, AreIndependent) {
    const data_store store;
    auto set = store.root().create_set("s", shape({1}), data_type::int8);
    for (const auto& extent : {scalar(), shape({1})}) {
        auto source = store.root().create_attribute("a", extent, data_type::float64);
        give<double>(source, {1.5});
        set.copy_attribute(source);
        give<double>(source, {2.5});
        EXPECT_EQ(values<double>(set.retrieve_attribute("a")), std::vector<double>{1.5});
        give<double>(set.retrieve_attribute("a"), {3.5});
        EXPECT_EQ(values<double>(source), std::vector<double>{2.5});
        store.root().delete_attribute("a");
    }
}

TEST(CopiedAttributes, TakeThePlaceOfOneOfTheirName) {
    const data_store store;
    auto group = store.root().create_group("g");
    for (const auto* name : {"x", "a", "y"})
        group.create_attribute(name, scalar(), data_type::int8);
    const auto before = group.retrieve_attribute("a");
    auto source = store.root().create_attribute("a", scalar(), data_type::string);
    source.write("new");
    group.copy_attribute(source);
    EXPECT_EQ(group.list_attributes_name(), (names{"x", "a", "y"}));
    EXPECT_EQ(texts(group.retrieve_attribute("a")), names{"new"});
    EXPECT_EQ(before.type(), data_type::int8);
}

TEST(CopiedAttributes, NeedAnAttribute) {
    const data_store store;
    EXPECT_EQ(refusal([&] { store.root().copy_attribute(data_attribute{}); }),
              "This handle denotes no attribute");
}

} // namespace
