#include "plugins/opensim/number_text.hpp"

#include <cmath>
#include <limits>
#include <optional>

#include <gtest/gtest.h>

namespace {

using opensim::digits_of;
using opensim::number_of;

TEST(NumberOf, TakesEverySpellingOfANumber) {
    EXPECT_EQ(number_of("12.5"), 12.5);
    EXPECT_EQ(number_of("+12.5"), 12.5);
    EXPECT_EQ(number_of("-.5e-3"), -0.0005);
    EXPECT_EQ(number_of("7."), 7.0);
    EXPECT_EQ(number_of("5e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(NumberOf, KnowsWhatLibrariesCallNoNumber) {
    for (const auto* text : {"nan", "NaN", "-nan", "nan(ind)", "-nan(ind)", "1.#QNAN", "-1.#IND",
                             "1.#QNAN0", "1.#SNAN"}) {
        ASSERT_TRUE(number_of(text)) << text;
        EXPECT_TRUE(std::isnan(*number_of(text))) << text;
    }
    EXPECT_EQ(number_of("-inf"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(number_of("1.#INF"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(number_of("-1.#INF00"), -std::numeric_limits<double>::infinity());
}

TEST(NumberOf, WhatIsTooSmallIsZeroAndWhatIsTooLargeIsNone) {
    EXPECT_EQ(number_of("1e-400"), 0.0);
    EXPECT_TRUE(std::signbit(*number_of("-1e-400")));
    EXPECT_EQ(number_of("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(number_of("1e400"), std::nullopt);
    EXPECT_EQ(number_of("1" + std::string(400, '0')), std::nullopt);
}

TEST(NumberOf, RefusesEverythingElse) {
    for (const auto* text :
         {"", "+", "-", "--1", "+-1", "1,5", "1.2.3", "0x1p3", "1e", "abc", "1 2", "1.#", "1d3"}) {
        EXPECT_EQ(number_of(text), std::nullopt) << text;
    }
}

TEST(DigitsOf, CountsPlacesAndDigits) {
    const auto expect = [](const char* text, int places, int significant) {
        const auto digits = digits_of(text);
        EXPECT_EQ(digits.places, places) << text;
        EXPECT_EQ(digits.significant, significant) << text;
    };
    expect("0.010", 3, 2);
    expect("12.5", 1, 3);
    expect("-3", 0, 1);
    expect("0", 0, 0);
    expect("1.250000e-02", 8, 7);
    expect("1.25e+01", 1, 3);
    expect("1.25e99999999999", 2, 3);
    expect("1e-999", 400, 1);
}

} // namespace
