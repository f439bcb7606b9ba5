#include "plugins/c3d/parameters/parameter.hpp"

#include <vector>

#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

using c3d::element_type;
using c3d::number_format;
using c3d_test::byte_vector;
using c3d_test::characters;
using c3d_test::hex;
using c3d_test::real;

/// Refers to `data` and `dimensions`.
c3d::parameter make(element_type type, const byte_vector& dimensions, const byte_vector& data) {
    c3d::parameter item;
    item.type = type;
    item.dimensions = c3d::parameter_dimensions(dimensions);
    item.data = data;
    return item;
}

TEST(Parameter, WordsHaveASignAsNumbersAndNoneAsCounts) {
    const auto dimensions = hex("02");
    const auto data = hex("FF FF 10 27");
    const auto item = make(element_type::integer, dimensions, data);
    EXPECT_EQ(item.number(0), -1.0);
    EXPECT_EQ(item.count(0), 65535U);
    EXPECT_EQ(item.number(1), 10000.0);
    EXPECT_EQ(item.number(2), std::nullopt);
    EXPECT_EQ(item.count(2), std::nullopt);
}

TEST(Parameter, BytesAreCounts) {
    const auto data = hex("C8");
    const auto item = make(element_type::byte, {}, data);
    EXPECT_EQ(item.number(0), 200.0);
    EXPECT_EQ(item.count(0), 200U);
}

TEST(Parameter, RealsAreCountsWhenTheyCanBe) {
    const auto dimensions = hex("05");
    byte_vector data;
    for (float value : {70000.0F, 1.6F, -1.0F, 1e30F}) {
        c3d_test::append(data, real(number_format::intel, value));
    }
    c3d_test::append(data, hex("00 00 C0 7F"));
    const auto item = make(element_type::real, dimensions, data);
    EXPECT_EQ(item.count(0), 70000U);
    EXPECT_EQ(item.count(1), 2U);
    EXPECT_EQ(item.count(2), std::nullopt);
    EXPECT_EQ(item.count(3), std::nullopt);
    EXPECT_EQ(item.count(4), std::nullopt);
}

TEST(Parameter, TextsAreNoNumbers) {
    const auto dimensions = hex("02");
    const auto data = characters("26");
    EXPECT_EQ(make(element_type::character, dimensions, data).number(0), std::nullopt);
}

TEST(Parameter, TextsAreCountedByAllDimensionsButTheFirst) {
    const auto dimensions = hex("02 02 02");
    const auto data = characters("a bbc dd");
    const auto item = make(element_type::character, dimensions, data);
    EXPECT_EQ(item.text_width(), 2U);
    EXPECT_EQ(item.text_count(), 4U);
    EXPECT_EQ(item.text(0), "a");
    EXPECT_EQ(item.text(1), "bb");
    EXPECT_EQ(item.text(3), "dd");
}

TEST(Parameter, TextWithoutDimensionsIsOneCharacter) {
    const auto data = characters("f");
    const auto item = make(element_type::character, {}, data);
    EXPECT_EQ(item.text_count(), 1U);
    EXPECT_EQ(item.text(0), "f");
}

TEST(ParameterFit, WhatIsThereIsKeptInWholeEntries) {
    c3d::parameter_dimensions dimensions(hex("20 06")); // six texts of 32
    EXPECT_EQ(c3d::fit(dimensions, element_type::character, 54), 32U);
    EXPECT_EQ(dimensions[1], 1);
}

TEST(ParameterFit, SevenLargeDimensionsDoNotOverflow) {
    c3d::parameter_dimensions dimensions(hex("FF FF FF FF FF FF FF"));
    EXPECT_EQ(c3d::fit(dimensions, element_type::real, 1000), 0U);
    EXPECT_EQ(dimensions[6], 0);
}

TEST(ParameterFit, SingleValueIsThereOrNot) {
    c3d::parameter_dimensions none;
    EXPECT_EQ(c3d::fit(none, element_type::real, 4), 4U);
    EXPECT_EQ(c3d::fit(none, element_type::real, 3), std::nullopt);
}

} // namespace
