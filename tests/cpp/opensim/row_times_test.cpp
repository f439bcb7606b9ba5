#include "plugins/opensim/row_times.hpp"

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugins/opensim/number_text.hpp"
#include "plugins/opensim/text_error.hpp"

namespace {

using opensim::row_times;
using opensim::time_base;
using testing::ElementsAre;
using testing::IsEmpty;

/// What becomes of times in the lines from 10 on.
struct decided {
    time_base base;
    std::vector<std::string> notes;
    std::string failure;
};

decided decide(const std::vector<std::string>& texts, std::optional<double> told = {}) {
    decided result;
    schema::warnings notes;
    try {
        row_times times;
        for (std::size_t i = 0; i < texts.size(); ++i)
            times.add(opensim::number_of(texts[i]).value(), texts[i], 10 + i);
        result.base = times.decide(told, notes);
    } catch (const opensim::text_error& error) {
        result.failure = error.what();
    }
    result.notes = notes.texts();
    return result;
}

std::vector<std::string> even(double first, double step, int count, int places) {
    std::vector<std::string> texts;
    for (int i = 0; i < count; ++i)
        texts.push_back(fmt::format("{:.{}f}", first + i * step, places));
    return texts;
}

TEST(RowTimes, GiveTheRoundestRateTheyAgreeWith) {
    EXPECT_DOUBLE_EQ(decide(even(0, 1.0 / 120, 500, 3)).base.rate, 120.0);
    EXPECT_DOUBLE_EQ(decide(even(0, 1.0 / 59.94, 2000, 6)).base.rate, 59.94);
    EXPECT_DOUBLE_EQ(decide(even(0, 0.03, 500, 2)).base.rate, 1 / 0.03);
    EXPECT_DOUBLE_EQ(decide({"0", "1.000000e-02", "2.000000e-02"}).base.rate, 100.0);
}

TEST(RowTimes, MayHaveHalvesThatWereRoundedEitherWay) {
    EXPECT_EQ(decide(even(0, 1.0 / 80, 500, 3)).base.rate, 80.0);
    EXPECT_EQ(decide(even(0, 1.0 / 400, 5000, 3), 400.0).base.rate, 400.0);
    EXPECT_EQ(decide(even(0, 1.0 / 2000, 5000, 3)).base.rate, 2000.0);
}

TEST(RowTimes, BelieveTheHeaderAsFarAsTheyAgree) {
    const auto coarse = decide(even(0, 0.001, 500, 2), 1000.0);
    EXPECT_EQ(coarse.base.rate, 1000.0);
    EXPECT_THAT(coarse.notes, IsEmpty());
    const auto other = decide(even(0, 0.01, 50, 3), 120.0);
    EXPECT_EQ(other.base.rate, 100.0);
    EXPECT_THAT(other.notes, ElementsAre("the header says 120 Hz, the times of the rows say 100 "
                                         "Hz; these count"));
}

TEST(RowTimes, MayBeRoundedToSinglePrecisionOrToSixDigits) {
    std::vector<std::string> single;
    std::vector<std::string> six_digits;
    for (int i = 0; i < 20000; ++i) {
        single.push_back(
            fmt::format("{:.9f}", static_cast<double>(static_cast<float>(i) * 0.005F)));
        six_digits.push_back(fmt::format("{:.6g}", i * 0.005));
    }
    EXPECT_EQ(decide(single).base.rate, 200.0);
    EXPECT_EQ(decide(six_digits).base.rate, 200.0);
}

TEST(RowTimes, AreUnevenWhereAStepDiffersByMoreThanRounding) {
    EXPECT_EQ(decide({"0.00", "0.01", "0.02", "0.05", "0.06", "0.07"}).failure,
              "line 13: the time, expected 0.01 s after 0.02, as between other rows, got 0.05");
    EXPECT_EQ(decide({"0.00", "0.01", "0.02", "0.05", "0.06", "0.07"}, 100.0).failure,
              "line 13: the time, expected 0.01 s after 0.02, as between other rows, got 0.05");
    EXPECT_EQ(decide({"0", "0", "0"}).failure, "line 11: the time, expected more than 0, got 0");
}

TEST(RowTimes, AreUnevenWhereOneOfManyIsMissing) {
    for (const int places : {2, 3, 6}) {
        auto texts = even(0, 0.01, 600, places);
        texts.erase(texts.begin() + 300);
        const auto text = fmt::format("line 310: the time, expected 0.01 s after {}, as between "
                                      "other rows, got {}",
                                      2.99, 3.01);
        EXPECT_EQ(decide(texts).failure, text) << places;
        EXPECT_EQ(decide(texts, 100.0).failure, text) << places;
    }
}

TEST(RowTimes, MayJumpByOneUnitWhereTheStepIsNone) {
    EXPECT_DOUBLE_EQ(decide(even(0, 1.0 / 95, 600, 2)).base.rate, 95.0);
    EXPECT_DOUBLE_EQ(decide({"0.000", "0.008", "0.017", "0.025", "0.033"}).base.rate, 120.0);
}

TEST(RowTimes, NeverFall) {
    EXPECT_EQ(decide({"0.00", "0.01", "0.005"}).failure,
              "line 12: the time, expected more than 0.01, got 0.005");
}

TEST(RowTimes, OfFarAwayNumbersAreNoTimes) {
    EXPECT_NE(decide({"-1e308", "1e308", "1.7e308"}).failure, "");
    EXPECT_NE(decide({"0", "5e-324", "1e-323"}).failure, "");
}

TEST(RowTimes, TellTheFirstFrame) {
    EXPECT_EQ(decide(even(0, 0.01, 5, 2)).base.first_frame, 1U);
    const auto later = decide(even(1.5, 0.01, 5, 2));
    EXPECT_EQ(later.base.first_frame, 151U);
    EXPECT_DOUBLE_EQ(later.base.start_time_s(), 1.5);
    EXPECT_THAT(later.notes, IsEmpty());
    EXPECT_EQ(decide(even(1.0 / 120, 1.0 / 120, 500, 3)).base.first_frame, 2U);
}

TEST(RowTimes, BetweenFramesBeginAtTheNearest) {
    const auto between = decide({"0.013", "0.023", "0.033"});
    EXPECT_EQ(between.base.first_frame, 2U);
    EXPECT_THAT(between.notes, ElementsAre("time begins at 0.013 s, between two frames; it begins "
                                           "at 0.01 s here, which is frame 2"));
}

TEST(RowTimes, WithoutAFrameNumberBeginAtZero) {
    const auto early = decide({"-0.05", "-0.04", "-0.03"});
    EXPECT_EQ(early.base.first_frame, 1U);
    EXPECT_THAT(early.notes, ElementsAre("time begins at -0.05 s, for which there is no frame "
                                         "number; it begins at 0 s here"));
    EXPECT_EQ(decide({"1e12", "1000000000000.001"}, 1000.0).base.first_frame, 1U);
}

TEST(RowTimes, OfOneRowNeedAHeader) {
    EXPECT_EQ(decide({"0.5"}, 100.0).base.first_frame, 51U);
    const auto alone = decide({"0.5"});
    EXPECT_EQ(alone.base.rate, 0.0);
    EXPECT_EQ(alone.base.first_frame, 1U);
    EXPECT_THAT(alone.notes, ElementsAre("1 rows tell no rate; it is 0 Hz"));
}

} // namespace
