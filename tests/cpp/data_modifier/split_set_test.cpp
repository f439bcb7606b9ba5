#include <memory>
#include <string>

#include <anvil/logging.hpp>

#include "tests/cpp/anvil/support/collecting_sink.hpp"
#include "tests/cpp/data_modifier/support/split_test.hpp"

namespace {

using data_modifier_test::names;
using data_modifier_test::shape;
using data_modifier_test::texts;
using data_modifier_test::values;
using data_modifier_test::whole;
using strata::data_type;

using doubles = std::vector<double>;

class SplitSet : public data_modifier_test::split_test {};

TEST_F(SplitSet, MakesASetOfEachChannel) {
    make_source(2, 3, {"a", "b"});
    EXPECT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"a", "b"}));
    EXPECT_EQ(part("a").type(), data_type::float64);
    EXPECT_EQ(part("b").shape(false), shape({2, 1, 3}));
    EXPECT_EQ(values<double>(whole(part("a"))), (doubles{0, 1, 2, 6, 7, 8}));
    EXPECT_EQ(values<double>(whole(part("b"))), (doubles{3, 4, 5, 9, 10, 11}));
}

TEST_F(SplitSet, GivesTheGroupItsSampling) {
    make_source(1, 3, {"a"});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_attributes_name(), (names{"NumSamples", "SampleRate", "StartTime"}));
    EXPECT_EQ(parts().retrieve_attribute("NumSamples").type(), data_type::int64);
    EXPECT_EQ(values<std::int64_t>(parts().retrieve_attribute("NumSamples")),
              std::vector<std::int64_t>{3});
    EXPECT_EQ(parts().retrieve_attribute("SampleRate").type(), data_type::float64);
    EXPECT_EQ(values<double>(parts().retrieve_attribute("SampleRate")), doubles{100.0});
    EXPECT_EQ(values<double>(parts().retrieve_attribute("StartTime")), doubles{0.25});
}

TEST_F(SplitSet, GivesTheGroupWhatTheShapeSaysWhenTheSourceSaysNothing) {
    auto source = make_source(1, 3, {"a"});
    for (const auto* name : {"NumSamples", "SampleRate", "StartTime"})
        source.delete_attribute(name);
    ASSERT_EQ(split(), "");
    EXPECT_EQ(values<std::int64_t>(parts().retrieve_attribute("NumSamples")),
              std::vector<std::int64_t>{3});
    EXPECT_EQ(values<double>(parts().retrieve_attribute("SampleRate")), doubles{0.0});
    EXPECT_EQ(number<double>("a", "StartTime"), 0.0);
}

TEST_F(SplitSet, SharesTheSamples) {
    const auto source = make_source(1, 3, {"a", "b"});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(strata::share_channel(part("b"), 0).data(), strata::share_channel(source, 1).data());
}

TEST_F(SplitSet, WritingAPartLeavesTheSource) {
    const auto source = make_source(1, 2, {"a", "b"});
    ASSERT_EQ(split(), "");
    strata_test::give<double>(whole(part("b")), {-1, -2});
    EXPECT_EQ(values<double>(whole(source)), (doubles{0, 1, 2, 3}));
}

TEST_F(SplitSet, GivesEveryChannelItsAttributesInOrder) {
    make_source(1, 2, {"a"});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(part("a").list_attributes_name(), (names{"Description", "RelativeSetIndex", "Label",
                                                       "Unit", "SampleRate", "StartTime"}));
    EXPECT_EQ(text("a", "Description"), "");
    EXPECT_EQ(part("a").retrieve_attribute("RelativeSetIndex").type(), data_type::int32);
    EXPECT_EQ(number<std::int32_t>("a", "RelativeSetIndex"), 0);
    EXPECT_EQ(text("a", "Label"), "a");
    EXPECT_EQ(text("a", "Unit"), "Unknown");
    EXPECT_EQ(number<double>("a", "SampleRate"), 100.0);
    EXPECT_EQ(number<double>("a", "StartTime"), 0.25);
    for (const auto& name : part("a").list_attributes_name()) {
        EXPECT_EQ(part("a").retrieve_attribute(name).shape(), strata_test::scalar()) << name;
    }
}

TEST_F(SplitSet, SplitsTheAttributesOfAnalogs) {
    auto source = make_source(1, 2, {"a", "b"});
    give_texts(source, "Units", {"V", "N"});
    give_numbers<std::int32_t>(source, "Gain", {3, 4});
    give_numbers<float>(source, "Scales", {0.5F, 0.25F});
    give_numbers<float>(source, "Offsets", {10.0F, 20.0F});
    give_texts(source, "Descriptions", {"left", "right"});
    give_texts(source, "Types", {"Analog", "Analog"});
    ASSERT_EQ(split({{"SourceAttributesSplit",
                      {{"Units", "Unit"},
                       {"Gain", "Gain"},
                       {"Scales", "Scale"},
                       {"Offsets", "Offset"},
                       {"Descriptions", "Description"},
                       {"Labels", "Label"},
                       {"Types", "MetricType"}}}}),
              "");
    EXPECT_EQ(part("b").list_attributes_name(),
              (names{"Description", "RelativeSetIndex", "Label", "Unit", "SampleRate", "StartTime",
                     "Gain", "Offset", "Scale", "MetricType"}));
    EXPECT_EQ(text("b", "Description"), "right");
    EXPECT_EQ(text("b", "Unit"), "N");
    EXPECT_EQ(part("b").retrieve_attribute("Gain").type(), data_type::int32);
    EXPECT_EQ(number<std::int32_t>("b", "Gain"), 4);
    EXPECT_EQ(part("b").retrieve_attribute("Offset").type(), data_type::float32);
    EXPECT_EQ(number<float>("b", "Offset"), 20.0F);
    EXPECT_EQ(part("b").retrieve_attribute("Scale").type(), data_type::float32);
    EXPECT_EQ(number<float>("b", "Scale"), 0.25F);
    EXPECT_EQ(text("b", "MetricType"), "Analog");
}

TEST_F(SplitSet, GivesInitialValuesWhereTheSourceHasNone) {
    auto source = make_source(1, 2, {"a", "b"});
    give_numbers<std::int32_t>(source, "Gain", {3});
    give_texts(source, "Units", {"V"});
    ASSERT_EQ(split({{"SourceAttributesSplit",
                      {{"Units", "Unit"},
                       {"Gain", "Gain"},
                       {"Scales", "Scale"},
                       {"Offsets", "Offset"},
                       {"Types", "MetricType"}}}}),
              "");
    EXPECT_EQ(number<std::int32_t>("a", "Gain"), 3);
    EXPECT_EQ(text("a", "Unit"), "V");
    EXPECT_EQ(number<std::int32_t>("b", "Gain"), 0);
    EXPECT_EQ(text("b", "Unit"), "Unknown");
    EXPECT_EQ(part("b").retrieve_attribute("Offset").type(), data_type::float32);
    EXPECT_EQ(number<float>("b", "Offset"), 0.0F);
    EXPECT_EQ(part("b").retrieve_attribute("Scale").type(), data_type::float32);
    EXPECT_EQ(number<float>("b", "Scale"), 1.0F);
    EXPECT_EQ(text("b", "MetricType"), "");
}

TEST_F(SplitSet, KnownAttributesHaveTheirTypeWhateverTheSourceHas) {
    auto source = make_source(1, 2, {"a"});
    give_numbers<std::int16_t>(source, "Gain", {3});
    give_numbers<double>(source, "Scales", {0.5});
    give_numbers<double>(source, "Types", {7});
    ASSERT_EQ(split({{"SourceAttributesSplit",
                      {{"Gain", "Gain"}, {"Scales", "Scale"}, {"Types", "MetricType"}}}}),
              "");
    EXPECT_EQ(part("a").retrieve_attribute("Gain").type(), data_type::int32);
    EXPECT_EQ(part("a").retrieve_attribute("Scale").type(), data_type::float32);
    EXPECT_EQ(text("a", "MetricType"), "");
}

TEST_F(SplitSet, LogsAnAttributeThatDoesNotFit) {
    const auto sink = std::make_shared<anvil_test::collecting_sink>();
    anvil::install_default_log_sink(sink);
    auto source = make_source(1, 2, {"a"});
    give_texts(source, "Scales", {"0.5"});
    give_numbers<double>(source, "Types", {7});
    const auto outcome =
        split({{"SourceAttributesSplit",
                {{"Scales", "Scale"}, {"Types", "MetricType"}, {"Missing", "Offset"}}}});
    anvil::install_default_log_sink(nullptr);
    ASSERT_EQ(outcome, "");
    EXPECT_EQ(number<float>("a", "Scale"), 1.0F);
    EXPECT_EQ(text("a", "MetricType"), "");
    const std::string line = "[4] [strata] Invalid value to read the content of an attribute";
    EXPECT_EQ(sink->lines, (names{line, line}));
}

TEST_F(SplitSet, OtherAttributesKeepTheTypeOfTheSource) {
    auto source = make_source(1, 2, {"a", "b"});
    give_numbers<std::uint16_t>(source, "Delays", {7});
    ASSERT_EQ(split({{"SourceAttributesSplit", {{"Delays", "Delay"}, {"Missing", "Nothing"}}}}),
              "");
    EXPECT_EQ(part("a").retrieve_attribute("Delay").type(), data_type::uint16);
    EXPECT_EQ(number<std::uint16_t>("a", "Delay"), 7);
    EXPECT_EQ(number<std::uint16_t>("b", "Delay"), 0);
    EXPECT_FALSE(part("a").exists_attribute("Nothing"));
}

TEST_F(SplitSet, RowAttributesFollowTheirChannel) {
    auto source = make_source(3, 2, {"a", "b"});
    strata::create_row_attribute(source, "Residuals",
                                 strata_test::buffers<float>({{1, 2}, {3, 4}}));
    auto masks = source.create_attribute("Masks", shape({2, 3}), data_type::uint8);
    strata_test::give<std::uint8_t>(masks, {1, 2, 3, 4, 5, 6});
    source.create_attribute("Matrix", shape({3, 2}), data_type::float32);
    source.create_attribute("Words", shape({2, 2}), data_type::string);
    ASSERT_EQ(split(), "");
    const auto residuals = part("b").retrieve_attribute("Residuals");
    EXPECT_EQ(residuals.type(), data_type::float32);
    EXPECT_EQ(residuals.shape(), shape({2}));
    EXPECT_EQ(values<float>(residuals), (std::vector<float>{3, 4}));
    EXPECT_EQ(values<std::uint8_t>(part("b").retrieve_attribute("Masks")),
              (std::vector<std::uint8_t>{4, 5, 6}));
    EXPECT_FALSE(part("b").exists_attribute("Matrix"));
    EXPECT_FALSE(part("b").exists_attribute("Words"));
}

TEST_F(SplitSet, FilterTakesChannelsInTheOrderOfTheSource) {
    make_source(1, 1, {"a", "b", "c"});
    ASSERT_EQ(split({{"LabelsFilter", {"c", "a", "unknown"}}}), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"a", "c"}));
    EXPECT_EQ(number<std::int32_t>("c", "RelativeSetIndex"), 2);
    EXPECT_EQ(values<double>(whole(part("c"))), doubles{2});
}

TEST_F(SplitSet, FilterTakesEveryChannelOfALabel) {
    make_source(1, 1, {"a", "b", "a"});
    ASSERT_EQ(split({{"LabelsFilter", {"a"}}}), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"a", "a_2"}));
    EXPECT_EQ(number<std::int32_t>("a_2", "RelativeSetIndex"), 2);
}

TEST_F(SplitSet, FilterOfNoneMakesAnEmptyGroup) {
    make_source(1, 4, {"a"});
    for (const auto& filter : {anvil::json::array(), anvil::json{"unknown"}}) {
        ASSERT_EQ(split({{"LabelsFilter", filter}}), "");
        EXPECT_TRUE(parts().list_set_children_name().empty());
        EXPECT_EQ(values<std::int64_t>(parts().retrieve_attribute("NumSamples")),
                  std::vector<std::int64_t>{4});
        root_.delete_group("Format/Data/Parts");
    }
}

TEST_F(SplitSet, SourceWithoutChannelsMakesAnEmptyGroup) {
    make_source(1, 4, {});
    ASSERT_EQ(split(), "");
    EXPECT_TRUE(parts().list_set_children_name().empty());
    EXPECT_EQ(values<double>(parts().retrieve_attribute("SampleRate")), doubles{100.0});
}

TEST_F(SplitSet, SourceWithoutChannelsNeedsNoLabels) {
    make_source(1, 4, {}).delete_attribute("Labels");
    EXPECT_EQ(split(), "");
}

TEST_F(SplitSet, GroupThatExistsReceivesTheSets) {
    make_source(1, 2, {"a"});
    auto group = root_.create_group("Format/Data/Parts");
    group.create_attribute("SampleRate", strata_test::scalar(), data_type::float32);
    group.create_set("old", shape({1}), data_type::int8);
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"old", "a"}));
    EXPECT_EQ(parts().retrieve_attribute("SampleRate").type(), data_type::float64);
    EXPECT_EQ(values<double>(parts().retrieve_attribute("SampleRate")), doubles{100.0});
}

TEST_F(SplitSet, SourceIsUnchanged) {
    const auto source = make_source(1, 2, {"a", "b"});
    const auto before = source.list_attributes_name();
    ASSERT_EQ(split(), "");
    EXPECT_EQ(source.list_attributes_name(), before);
    EXPECT_EQ(source.shape(false), shape({1, 2, 2}));
}

TEST_F(SplitSet, CompactSamplesStayCompact) {
    auto channels = strata_test::buffers<std::int16_t>({{1, 2}, {3, 4}});
    for (auto& channel : channels)
        channel.set_scaling(1.0, 0.5);
    auto source = strata::create_channel_set(root_, "Format/Data/Source", 1, 2, channels);
    give_texts(source, "Labels", {"a", "b"});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(strata::share_channel(part("b"), 0).stored(), data_type::int16);
    EXPECT_EQ(values<double>(whole(part("b"))), (doubles{1, 1.5}));
}

} // namespace
