#include "schema/force_platform_table.hpp"

#include <cstdint>
#include <limits>
#include <numeric>
#include <span>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <strata/data_store.hpp>

#include "schema/write_attribute.hpp"

namespace {

using schema::force_platform;
using schema::force_platform_table;
using schema::vector3;
using testing::ElementsAre;
using testing::IsEmpty;

class ForcePlatformTable : public testing::Test {
  protected:
    void set(const char* name, std::vector<float> values, std::vector<std::int64_t> extents) {
        schema::write_numbers(group_, name, strata::data_shape(extents, false),
                              std::span<const float>(values));
    }
    void set_words(const char* name, const std::vector<std::int16_t>& values,
                   const std::vector<std::int64_t>& extents) {
        schema::write_numbers(group_, name, strata::data_shape(extents, false),
                              std::span<const std::int16_t>(values));
    }
    /// 0, 1, 2 and so on.
    void set_counting(const char* name, const std::vector<std::int64_t>& extents) {
        const auto count = strata::data_shape(extents, false).element_count();
        std::vector<float> values(static_cast<std::size_t>(count));
        std::iota(values.begin(), values.end(), 0.0F);
        set(name, values, extents);
    }
    [[nodiscard]] std::vector<force_platform> read() const {
        const force_platform_table table(root_);
        std::vector<force_platform> platforms;
        for (std::size_t i = 0; i < table.count(); ++i)
            platforms.push_back(table.platform(i));
        return platforms;
    }

    strata::data_store store_;
    strata::data_group root_ = store_.root();
    strata::data_group group_ = root_.create_group("Format/Metadata/FORCE_PLATFORM");
};

TEST_F(ForcePlatformTable, IsEmptyWithoutTheGroup) {
    EXPECT_EQ(force_platform_table(strata::data_store().root()).count(), 0U);
    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(ForcePlatformTable, GivesEachPlatformItsPart) {
    set_words("TYPE", {2, 4}, {2});
    set_counting("CORNERS", {2, 4, 3});
    set_counting("ORIGIN", {2, 3});
    set_words("CHANNEL", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, {2, 6});
    set_counting("FPCOPPOLY", {2, 12});
    const auto platforms = read();
    ASSERT_EQ(platforms.size(), 2U);
    EXPECT_EQ(platforms[1].type, 4);
    EXPECT_EQ((*platforms[1].corners)[1], (vector3{15, 16, 17}));
    EXPECT_EQ(*platforms[1].origin, (vector3{3, 4, 5}));
    EXPECT_THAT(platforms[1].channels, ElementsAre(7, 8, 9, 10, 11, 12));
    EXPECT_EQ(platforms[1].polynomial.front(), 12.0);
    EXPECT_EQ(platforms[1].polynomial.size(), 12U);
}

TEST_F(ForcePlatformTable, TurnsMatricesIntoRows) {
    set_words("TYPE", {4, 4}, {2});
    set_counting("CAL_MATRIX", {2, 6, 6});
    const auto matrix = read()[1].calibration;
    ASSERT_EQ(matrix.size, 6U);
    EXPECT_EQ(matrix.at(0, 0), 36.0);
    EXPECT_EQ(matrix.at(1, 0), 37.0); // the row varies fastest in the file
    EXPECT_EQ(matrix.at(0, 1), 42.0);
}

TEST_F(ForcePlatformTable, TakesTheUpperLeftPartOfWiderMatrices) {
    set_words("TYPE", {3, 2}, {2});
    set_counting("CAL_MATRIX", {2, 8, 8});
    const auto platforms = read();
    EXPECT_EQ(platforms[0].calibration.size, 8U);
    ASSERT_EQ(platforms[1].calibration.size, 6U);
    EXPECT_EQ(platforms[1].calibration.at(2, 3), 64.0 + 2.0 + 8.0 * 3.0);
}

TEST_F(ForcePlatformTable, HasTheChannelsOfTheType) {
    set_words("TYPE", {2, 3, 21}, {3});
    set_words("CHANNEL",
              {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 13, 14, 0, 15, 0, 16, 0, 0, 0, 17},
              {3, 8});
    const auto platforms = read();
    EXPECT_THAT(platforms[0].channels, ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(platforms[1].channels, ElementsAre(7, 8, 9, 10, 11, 12, 13, 14));
    EXPECT_THAT(platforms[2].channels, ElementsAre(15, 16, 17));
}

TEST_F(ForcePlatformTable, UnderstandsFlattenedTables) {
    set_words("TYPE", {2, 3}, {2});
    set_words("CHANNEL", {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 13, 14}, {16});
    set_counting("CORNERS", {24});
    set_counting("CAL_MATRIX", {128});
    const auto platforms = read();
    EXPECT_THAT(platforms[0].channels, ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(platforms[1].channels, ElementsAre(7, 8, 9, 10, 11, 12, 13, 14));
    EXPECT_EQ((*platforms[1].corners)[0], (vector3{12, 13, 14}));
    EXPECT_EQ(platforms[1].calibration.at(0, 1), 72.0);
}

TEST_F(ForcePlatformTable, CountsWhatUsedAndTypeAgreeOn) {
    set_words("TYPE", {2, 2, 2}, {3});
    EXPECT_EQ(read().size(), 3U);
    set_words("USED", {2}, {});
    EXPECT_EQ(read().size(), 2U);
    group_.delete_attribute("USED");
    set_words("USED", {9}, {});
    EXPECT_EQ(read().size(), 3U);
    group_.delete_attribute("USED");
    set_words("USED", {-1}, {});
    EXPECT_THAT(read(), IsEmpty());
}

TEST_F(ForcePlatformTable, CountsTypesWhereUsedIsNoCount) {
    set_words("TYPE", {2, 2}, {2});
    for (const float used : {1.5F, std::numeric_limits<float>::quiet_NaN(), 2e9F,
                             std::numeric_limits<float>::infinity()}) {
        set("USED", {used}, {});
        EXPECT_EQ(read().size(), 2U) << used;
        group_.delete_attribute("USED");
    }
}

TEST_F(ForcePlatformTable, WithoutTypesNeedsUsed) {
    set_counting("CORNERS", {2, 4, 3});
    EXPECT_THAT(read(), IsEmpty());
    set_words("USED", {32767}, {});
    const auto platforms = read();
    ASSERT_EQ(platforms.size(), 2U);
    EXPECT_EQ(platforms[0].type, 0);
    EXPECT_TRUE(platforms[1].corners);
    EXPECT_FALSE(platforms[1].origin);
    EXPECT_THAT(platforms[1].channels, IsEmpty());
}

TEST_F(ForcePlatformTable, ReadsMatricesThatAreNotSquare) {
    set_words("TYPE", {4, 4}, {2});
    set_counting("CAL_MATRIX", {2, 6, 8}); // six columns of eight
    auto matrix = read()[1].calibration;
    ASSERT_EQ(matrix.size, 6U);
    EXPECT_EQ(matrix.at(1, 2), 48.0 + 1.0 + 8.0 * 2.0);
    group_.delete_attribute("CAL_MATRIX");
    set_counting("CAL_MATRIX", {2, 8, 6}); // eight columns of six
    matrix = read()[1].calibration;
    ASSERT_EQ(matrix.size, 6U);
    EXPECT_EQ(matrix.at(1, 2), 48.0 + 1.0 + 6.0 * 2.0);
}

TEST_F(ForcePlatformTable, TakesMatricesThatAreTooSmallForMissing) {
    set_words("TYPE", {4, 4}, {2});
    set_counting("CAL_MATRIX", {2, 5, 6});
    const force_platform_table table(root_);
    EXPECT_EQ(table.platform(0).calibration.size, 0U);
    EXPECT_THAT(
        table.misshapen(),
        ElementsAre("FORCE_PLATFORM:CAL_MATRIX is not read : its dimensions are 2 x 5 x 6"));
}

TEST_F(ForcePlatformTable, TakesReversedTablesForMissing) {
    set_words("TYPE", {2, 2}, {2});
    set_counting("CORNERS", {3, 4, 2});
    set_counting("ORIGIN", {3, 2});
    set_counting("CAL_MATRIX", {6, 6, 2});
    set_words("CHANNEL", {1, 7, 2, 8, 3, 9, 4, 10, 5, 11, 6, 12}, {6, 2});
    const force_platform_table table(root_);
    EXPECT_EQ(table.misshapen().size(), 4U);
    const auto platform = table.platform(0);
    EXPECT_FALSE(platform.corners);
    EXPECT_FALSE(platform.origin);
    EXPECT_EQ(platform.calibration.size, 0U);
    EXPECT_THAT(platform.channels, IsEmpty());
}

TEST_F(ForcePlatformTable, ReadsChannelsOver127InBytes) {
    set_words("TYPE", {2}, {1});
    const std::vector<std::int8_t> channels = {-126, -125, 127, 1, 2, -1};
    schema::write_numbers(group_, "CHANNEL", strata::data_shape({1, 6}, false),
                          std::span<const std::int8_t>(channels));
    EXPECT_THAT(read()[0].channels, ElementsAre(130, 131, 127, 1, 2, 255));
}

TEST_F(ForcePlatformTable, TakesTextForNothing) {
    for (const auto* name : {"USED", "TYPE", "CORNERS", "ORIGIN", "CHANNEL", "CAL_MATRIX"})
        schema::write_texts(group_, name, std::vector<std::string>{"a", "b"});
    EXPECT_THAT(read(), IsEmpty());
    EXPECT_EQ(force_platform_table(root_).unreadable().size(), 6U);
}

} // namespace
