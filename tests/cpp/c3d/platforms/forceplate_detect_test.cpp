#include "plugins/c3d/platforms/forceplate_detect.hpp"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <strata/access/same_set.hpp>
#include <strata/data_store.hpp>

#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// An acquisition of two platforms and fourteen analog channels "a1" to "a14".
class ForceplateDetect : public testing::Test {
  protected:
    void SetUp() override {
        std::vector<std::string> labels;
        for (int i = 1; i <= 14; ++i)
            labels.push_back(fmt::format("a{}", i));
        for (const auto& label : labels)
            channels_.create_set(label, strata::data_shape({1, 1, 3}, false),
                                 strata::data_type::float64);
        auto analog = root_.create_group("Format/Metadata/ANALOG");
        schema::write_texts(analog, "LABELS", labels);
        set_types({2, 3});
        set<float>("CORNERS",
                   {1, 1, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0},
                   {2, 4, 3});
        set<float>("ORIGIN", {1, 2, 40, -120, 200, 54}, {2, 3});
        set<std::int16_t>("CHANNEL", {6, 5, 4, 3, 2, 1, 0, 0, 7, 8, 9, 10, 11, 12, 13, 14}, {2, 8});
    }

    template <typename Number>
    void set(const char* name, const std::vector<Number>& values,
             const std::vector<std::int64_t>& extents) {
        if (platforms_.exists_attribute(name))
            platforms_.delete_attribute(name);
        schema::write_numbers(platforms_, name, strata::data_shape(extents, false),
                              std::span<const Number>(values));
    }
    void set_types(const std::vector<std::int16_t>& types) {
        set<std::int16_t>("TYPE", types, {static_cast<std::int64_t>(types.size())});
    }

    /// The messages of the status; empty on success.
    std::string detect(std::int64_t index, const char* destination = "Devices/FP") {
        auto root = root_;
        return c3d::forceplate_detect()
            .evaluate(root, {{"callable_unit", "org.c3d.forceplate-detect"},
                             {"SourceGroup", "Format/Data/AnalogsExport"},
                             {"MetadataSourceGroup", ""},
                             {"DestinationGroup", destination},
                             {"ForceplateIndex", index}})
            .message("|");
    }

    [[nodiscard]] strata::data_group group() const { return root_.retrieve_group("Devices/FP"); }
    [[nodiscard]] std::vector<double> numbers(const char* name) const {
        return schema::read_numbers<double>(group().retrieve_attribute(name));
    }

    strata::data_store store_;
    strata::data_group root_ = store_.root();
    strata::data_group platforms_ = root_.create_group("Format/Metadata/FORCE_PLATFORM");
    strata::data_group channels_ = root_.create_group("Format/Data/AnalogsExport");
};

TEST_F(ForceplateDetect, LinksTheChannelsInTheOrderOfTheTable) {
    ASSERT_EQ(detect(0), "");
    const auto links = group().retrieve_group("Channels");
    EXPECT_THAT(links.list_set_children_name(), ElementsAre("Fx", "Fy", "Fz", "Mx", "My", "Mz"));
    EXPECT_TRUE(strata::same_set(links.retrieve_set("Fx"), channels_.retrieve_set("a6")));
    EXPECT_TRUE(strata::same_set(links.retrieve_set("Mz"), channels_.retrieve_set("a1")));
}

TEST_F(ForceplateDetect, NegatesAnOriginAboveTheSurface) {
    ASSERT_EQ(detect(0), "");
    EXPECT_THAT(numbers("Origin"), ElementsAre(-1, -2, -40));
}

TEST_F(ForceplateDetect, KeepsAnOriginBelowTheSurface) {
    set<float>("ORIGIN", {1, 2, -40, 120, 200, -54}, {2, 3});
    ASSERT_EQ(detect(0), "");
    EXPECT_THAT(numbers("Origin"), ElementsAre(1, 2, -40));
}

TEST_F(ForceplateDetect, TakesTheDistancesOfSensorsAsPositive) {
    ASSERT_EQ(detect(1), "");
    EXPECT_THAT(numbers("Origin"), ElementsAre(120, 200, -54));
    EXPECT_EQ(numbers("Type"), std::vector<double>{3});
}

TEST_F(ForceplateDetect, TakesOnlyTheDepthOfAPlatformThatMeasuresThePoint) {
    set_types({1, 1});
    ASSERT_EQ(detect(0), "");
    EXPECT_THAT(numbers("Origin"), ElementsAre(0, 0, -40));
    platforms_.delete_attribute("ORIGIN");
    ASSERT_EQ(detect(0), "");
    EXPECT_THAT(numbers("Origin"), ElementsAre(0, 0, 0));
}

TEST_F(ForceplateDetect, ReplacesTheGroupOfBefore) {
    ASSERT_EQ(detect(0), "");
    ASSERT_EQ(detect(1), "");
    EXPECT_EQ(group().retrieve_group("Channels").list_set_children_name().size(), 8U);
}

TEST_F(ForceplateDetect, AFailureLeavesTheGroupOfBefore) {
    ASSERT_EQ(detect(0), "");
    set_types({21, 3});
    EXPECT_EQ(detect(0), "the channels of type 21 are not known");
    EXPECT_EQ(numbers("Type"), std::vector<double>{2});
}

TEST_F(ForceplateDetect, KeepsTheMatrixOfType4Alone) {
    set<float>("CAL_MATRIX", std::vector<float>(72, 2.0F), {2, 6, 6});
    ASSERT_EQ(detect(0), "");
    EXPECT_FALSE(group().exists_attribute("CalibrationMatrix"));
    set_types({4, 3});
    ASSERT_EQ(detect(0), "");
    EXPECT_EQ(numbers("CalibrationMatrix"), std::vector<double>(36, 2.0));
}

TEST_F(ForceplateDetect, TakesTheUnitMatrixWhereThereIsNone) {
    set_types({4, 3});
    ASSERT_EQ(detect(0), "");
    const auto matrix = numbers("CalibrationMatrix");
    ASSERT_EQ(matrix.size(), 36U);
    for (std::size_t i = 0; i < 36; ++i)
        EXPECT_EQ(matrix[i], i % 7 == 0 ? 1.0 : 0.0);
}

TEST_F(ForceplateDetect, NamesWhatIsMissing) {
    channels_.delete_set("a4");
    EXPECT_EQ(detect(0), "FORCE_PLATFORM:CHANNEL names the analog channel 4 as its Fz, which is "
                         "not there");
    set<float>("CORNERS", std::vector<float>(24, 0.0F), {2, 4, 3});
    EXPECT_EQ(detect(0), "FORCE_PLATFORM:CORNERS span no plane for it");
    EXPECT_EQ(detect(2), "the index is 2, the file has 2 platforms");
    EXPECT_EQ(detect(-1), "the index is -1, the file has 2 platforms");
    EXPECT_FALSE(root_.exists_group("Devices"));
}

TEST_F(ForceplateDetect, NeedsItsParameters) {
    auto root = root_;
    const auto status = c3d::forceplate_detect().evaluate(root, anvil::json::object());
    EXPECT_THAT(status.message("|"), HasSubstr("\"SourceGroup\""));
}

} // namespace
