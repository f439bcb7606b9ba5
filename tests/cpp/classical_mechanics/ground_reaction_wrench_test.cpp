#include "plugins/classical_mechanics/ground_reaction_wrench.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <strata/data_store.hpp>

#include "schema/write_attribute.hpp"

namespace {

using schema::write_number;
using schema::write_numbers;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::NanSensitiveDoubleEq;
using testing::Pointwise;

/// A platform in the group "Plates/One": in the floor of the laboratory, its centre at (200, 300,
/// 0), z down. Two samples, the second without load.
class GroundReactionWrench : public testing::Test {
  protected:
    void SetUp() override {
        write_numbers(platform_, "Corners", strata::data_shape({4, 3}, false),
                      std::span<const double>(corners_));
        set_origin({0.6, -1.2, -41.3});
    }

    void set_origin(const std::vector<double>& origin) {
        if (platform_.exists_attribute("Origin"))
            platform_.delete_attribute("Origin");
        write_numbers(platform_, "Origin", origin);
    }

    /// The type, and a channel for each value.
    void set_channels(std::int32_t type, const std::vector<double>& values) {
        write_number(platform_, "Type", type);
        auto channels = platform_.create_group("Channels");
        for (std::size_t i = 0; i < values.size(); ++i) {
            const strata::data_shape shape({1, 1, 2}, false);
            auto set =
                channels.create_set("c" + std::to_string(i), shape, strata::data_type::float64);
            const std::array<double, 2> samples = {values[i], 0.0};
            EXPECT_TRUE(
                set.select(shape, false).write_value(samples.data(), strata::data_type::float64));
            write_number(set, "SampleRate", 1000.0);
        }
    }

    /// The messages of the status; empty on success.
    std::string evaluate(const anvil::json& changes = anvil::json::object()) {
        anvil::json parameters = {{"callable_unit", "classical-mechanics.ground-reaction-wrench"},
                                  {"SourceGroup", "Plates/One"},
                                  {"DestinationGroup", "Plates/One/W"},
                                  {"FzThreshold", 10.0},
                                  {"GlobalTransformation", false},
                                  {"Location", "hardware-origin"}};
        parameters.merge_patch(changes);
        auto root = root_;
        return classical_mechanics::ground_reaction_wrench()
            .evaluate(root, parameters)
            .message("|");
    }

    /// Force, moment and point of one sample.
    [[nodiscard]] std::vector<double> wrench(std::size_t sample,
                                             const char* path = "Plates/One/W") const {
        const auto set = root_.retrieve_set(path);
        const auto shape = set.shape(false);
        EXPECT_EQ(shape, strata::data_shape({9, 1, 2}, false));
        std::vector<double> all(18);
        EXPECT_TRUE(set.select(shape, false).read_value(all.data(), strata::data_type::float64));
        std::vector<double> result;
        for (std::size_t component = 0; component < 9; ++component)
            result.push_back(all[2 * component + sample]);
        return result;
    }

    const std::vector<double> corners_ = {0, 600, 0, 400, 600, 0, 400, 0, 0, 0, 0, 0};
    const std::vector<double> six_ = {30, -12, 700, 14000, -35000, 2500};
    const anvil::json at_point_ = {{"Location", "point-of-application"}};
    strata::data_store store_;
    strata::data_group root_ = store_.root();
    strata::data_group platform_ = root_.create_group("Plates/One");
};

auto near(const std::vector<double>& values, double tolerance = 1e-9) {
    return Pointwise(DoubleNear(tolerance), values);
}

TEST_F(GroundReactionWrench, AtTheMeasuringOriginIsWhatWasMeasured) {
    set_channels(2, six_);
    ASSERT_EQ(evaluate(), "");
    EXPECT_THAT(wrench(0), near({30, -12, 700, 14000, -35000, 2500, -0.6, 1.2, 41.3}));
}

TEST_F(GroundReactionWrench, AtThePointOfApplicationHasTheFreeMoment) {
    set_channels(2, six_);
    ASSERT_EQ(evaluate(at_point_), "");
    EXPECT_THAT(wrench(0), near({30, -12, 700, 0, 0, 3700, 47.63, 21.908, 0}, 1e-9));
}

TEST_F(GroundReactionWrench, IsTurnedIntoTheLaboratory) {
    set_channels(2, six_);
    ASSERT_EQ(evaluate({{"Location", "point-of-application"}, {"GlobalTransformation", true}}), "");
    EXPECT_THAT(wrench(0), near({-30, -12, -700, 0, 0, -3700, 152.37, 321.908, 0}));
}

TEST_F(GroundReactionWrench, UnderTheThresholdHasNoPoint) {
    set_channels(2, six_);
    auto strict = at_point_;
    strict["FzThreshold"] = 701;
    ASSERT_EQ(evaluate(strict), "");
    const auto nan = std::nan("");
    const std::vector<double> expected = {30, -12, 700, 14000, -35000, 2500, nan, nan, nan};
    EXPECT_THAT(wrench(0), Pointwise(NanSensitiveDoubleEq(), expected));
}

TEST_F(GroundReactionWrench, OfEightForces) {
    set_origin({120, 200, -54});
    set_channels(3, {10, 14, -6, 2, 200, 150, 250, 100});
    ASSERT_EQ(evaluate(), "");
    EXPECT_THAT(wrench(0), near({24, -4, 700, 0, 12000, -160, 0, 0, 54}));
    ASSERT_EQ(evaluate(at_point_), "");
    EXPECT_THAT(wrench(0), near({24, -4, 700, 0, 0, -228.571429, -18.994286, 0.308571, 0}, 1e-6));
}

TEST_F(GroundReactionWrench, OfAMeasuredPointGivesThatPoint) {
    set_origin({0, 0, -54});
    set_channels(1, {30, -12, 700, 50, 20, 1500});
    ASSERT_EQ(evaluate(at_point_), "");
    EXPECT_THAT(wrench(0), near({30, -12, 700, 0, 0, 1500, 50, 20, 0}));
    ASSERT_EQ(evaluate(), "");
    // About the centre (14000, -35000, 300), and F × (0, 0, -54) less.
    EXPECT_THAT(wrench(0), near({30, -12, 700, 14000 - 648, -35000 - 1620, 300, 0, 0, 54}));
}

TEST_F(GroundReactionWrench, OfSixOutputsUsesTheWholeMatrix) {
    std::vector<double> matrix(36);
    std::vector<double> expected(6);
    for (std::size_t i = 0; i < 36; ++i) {
        matrix[i] = static_cast<double>(i * i % 7) - 2.0;
        expected[i / 6] += matrix[i] * six_[i % 6];
    }
    write_numbers(platform_, "CalibrationMatrix", strata::data_shape({6, 6}, false),
                  std::span<const double>(matrix));
    set_channels(4, six_);
    ASSERT_EQ(evaluate(), "");
    expected.insert(expected.end(), {-0.6, 1.2, 41.3});
    EXPECT_THAT(wrench(0), near(expected));
}

TEST_F(GroundReactionWrench, LocalSetsAreFoundFromTheHolderOfThePlatform) {
    set_channels(2, six_);
    ASSERT_EQ(evaluate({{"DestinationGroup", "One/W^LCS"}}), "");
    EXPECT_EQ(wrench(0, "Plates/One/W^LCS").front(), 30.0);
}

TEST_F(GroundReactionWrench, ReplacesTheSetOfBefore) {
    set_channels(2, six_);
    ASSERT_EQ(evaluate(), "");
    ASSERT_EQ(evaluate(at_point_), "");
    EXPECT_EQ(wrench(0)[5], 3700.0);
    EXPECT_THAT(platform_.list_set_children_name(), ElementsAre("W"));
}

TEST_F(GroundReactionWrench, TakesTheRateOfTheChannels) {
    set_channels(2, six_);
    ASSERT_EQ(evaluate(), "");
    double rate = 0.0;
    ASSERT_TRUE(root_.retrieve_set("Plates/One/W")
                    .retrieve_attribute("SampleRate")
                    .read_value(&rate, strata::data_type::float64));
    EXPECT_EQ(rate, 1000.0);
}

TEST_F(GroundReactionWrench, NamesTheParameterThatIsWrong) {
    set_channels(2, six_);
    EXPECT_THAT(evaluate({{"FzThreshold", -1.0}}), HasSubstr("\"FzThreshold\""));
    EXPECT_THAT(evaluate({{"FzThreshold", std::nan("")}}), HasSubstr("\"FzThreshold\""));
    EXPECT_THAT(evaluate({{"FzThreshold", "ten"}}), HasSubstr("\"FzThreshold\""));
    EXPECT_THAT(evaluate({{"GlobalTransformation", 1}}), HasSubstr("\"GlobalTransformation\""));
    EXPECT_THAT(evaluate({{"Location", "center"}}), HasSubstr("\"Location\""));
    EXPECT_THAT(evaluate({{"SourceGroup", nullptr}}), HasSubstr("\"SourceGroup\""));
    EXPECT_FALSE(root_.exists_set("Plates/One/W"));
}

TEST_F(GroundReactionWrench, SaysWhatThePlatformLacks) {
    EXPECT_THAT(evaluate({{"SourceGroup", "Plates/Two"}}),
                EndsWith("there is no platform 'Plates/Two'"));
    EXPECT_THAT(evaluate(), EndsWith("the platform's type is 0, not 1 to 4"));
    set_channels(3, six_);
    EXPECT_THAT(evaluate(), EndsWith("the platform has 6 channels, not 8"));
    platform_.delete_attribute("Corners");
    EXPECT_THAT(evaluate(), EndsWith("the attribute 'Corners' has no 12 numbers"));
}

TEST_F(GroundReactionWrench, RefusesChannelsOfDifferentLength) {
    set_channels(2, six_);
    const std::array<std::uint64_t, 3> longer = {1, 1, 3};
    platform_.retrieve_set("Channels/c4").resize(longer.data(), longer.size());
    EXPECT_THAT(evaluate(), EndsWith("the platform's channels differ in length"));
}

TEST_F(GroundReactionWrench, RefusesADestinationWithoutGroup) {
    set_channels(2, six_);
    EXPECT_THAT(evaluate({{"DestinationGroup", "W"}}),
                EndsWith("there is no group for the set 'W'"));
    EXPECT_THAT(evaluate({{"DestinationGroup", "Nine/W"}}),
                EndsWith("there is no group for the set 'Nine/W'"));
}

} // namespace
