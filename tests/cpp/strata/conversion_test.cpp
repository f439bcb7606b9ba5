#include <cmath>
#include <limits>

#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_store;
using strata::data_type;
using strata_test::give;
using strata_test::shape;
using strata_test::type_of;
using strata_test::values;

/// `given` written to an attribute of its own type and read as `To`.
template <typename To, typename From> std::vector<To> converted(const std::vector<From>& given) {
    const data_store store;
    auto attribute = store.root().create_attribute(
        "a", shape({static_cast<std::int64_t>(given.size())}), type_of<From>());
    give(attribute, given);
    return values<To>(attribute);
}

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

template <typename Kind> class Conversion : public testing::Test {};

using number_kinds =
    testing::Types<std::int8_t, std::uint8_t, std::int16_t, std::uint16_t, std::int32_t,
                   std::uint32_t, std::int64_t, std::uint64_t, float, double>;
TYPED_TEST_SUITE(Conversion, number_kinds);

TYPED_TEST(Conversion, KeepsSmallValuesInEveryKind) {
    const std::vector<TypeParam> given{0, 1, 127};
    EXPECT_EQ(converted<std::int8_t>(given), (std::vector<std::int8_t>{0, 1, 127}));
    EXPECT_EQ(converted<std::uint8_t>(given), (std::vector<std::uint8_t>{0, 1, 127}));
    EXPECT_EQ(converted<std::int16_t>(given), (std::vector<std::int16_t>{0, 1, 127}));
    EXPECT_EQ(converted<std::uint16_t>(given), (std::vector<std::uint16_t>{0, 1, 127}));
    EXPECT_EQ(converted<std::int32_t>(given), (std::vector<std::int32_t>{0, 1, 127}));
    EXPECT_EQ(converted<std::uint32_t>(given), (std::vector<std::uint32_t>{0, 1, 127}));
    EXPECT_EQ(converted<std::int64_t>(given), (std::vector<std::int64_t>{0, 1, 127}));
    EXPECT_EQ(converted<std::uint64_t>(given), (std::vector<std::uint64_t>{0, 1, 127}));
    EXPECT_EQ(converted<float>(given), (std::vector<float>{0, 1, 127}));
    EXPECT_EQ(converted<double>(given), (std::vector<double>{0, 1, 127}));
}

TYPED_TEST(Conversion, KeepsItsOwnLimits) {
    using limits = std::numeric_limits<TypeParam>;
    const std::vector<TypeParam> given{limits::lowest(), limits::max()};
    EXPECT_EQ(converted<TypeParam>(given), given);
}

TYPED_TEST(Conversion, MakesTruthOfWhatIsNotZero) {
    EXPECT_EQ(converted<char>(std::vector<TypeParam>{0, 1, 100}), (std::vector<char>{0, 1, 1}));
}

TYPED_TEST(Conversion, TakesTruthAsZeroOrOne) {
    EXPECT_EQ(converted<TypeParam>(std::vector<char>{0, 1, 2}), (std::vector<TypeParam>{0, 1, 1}));
}

TYPED_TEST(Conversion, GivesTheSameWhenWriting) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", shape({3}), type_of<TypeParam>());
    give<double>(attribute, {0.0, 2.0, 100.9});
    const std::vector<TypeParam> expected{0, 2, static_cast<TypeParam>(100.9)};
    EXPECT_EQ(values<TypeParam>(attribute), expected);
}

template <typename Kind> class Saturation : public testing::Test {};

using integer_kinds = testing::Types<std::int8_t, std::uint8_t, std::int16_t, std::uint16_t,
                                     std::int32_t, std::uint32_t, std::int64_t, std::uint64_t>;
TYPED_TEST_SUITE(Saturation, integer_kinds);

TYPED_TEST(Saturation, ClampsRealNumbersBeyondTheLimits) {
    using limits = std::numeric_limits<TypeParam>;
    EXPECT_EQ(converted<TypeParam>(std::vector<double>{1e300, infinity, -1e300, -infinity}),
              (std::vector<TypeParam>{limits::max(), limits::max(), limits::min(), limits::min()}));
    EXPECT_EQ(converted<TypeParam>(std::vector<float>{3e38F, -3e38F}),
              (std::vector<TypeParam>{limits::max(), limits::min()}));
}

TYPED_TEST(Saturation, ClampsJustBeyondTheLimits) {
    using limits = std::numeric_limits<TypeParam>;
    const auto beyond = std::ldexp(1.0, limits::digits);
    EXPECT_EQ(converted<TypeParam>(std::vector<double>{beyond}),
              std::vector<TypeParam>{limits::max()});
    EXPECT_EQ(converted<TypeParam>(std::vector<double>{
                  std::nextafter(static_cast<double>(limits::min()), -infinity)}),
              std::vector<TypeParam>{limits::min()});
}

TYPED_TEST(Saturation, MakesZeroOfNotANumber) {
    EXPECT_EQ(converted<TypeParam>(std::vector<double>{not_a_number}), std::vector<TypeParam>{0});
    EXPECT_EQ(converted<TypeParam>(std::vector<float>{static_cast<float>(not_a_number)}),
              std::vector<TypeParam>{0});
}

TYPED_TEST(Saturation, CutsOffFractions) {
    EXPECT_EQ(converted<TypeParam>(std::vector<double>{2.9, 0.5, -0.5}),
              (std::vector<TypeParam>{2, 0, 0}));
}

TYPED_TEST(Saturation, ClampsIntegersBeyondTheLimits) {
    using limits = std::numeric_limits<TypeParam>;
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(converted<TypeParam>(std::vector<std::uint64_t>{most}),
              std::vector<TypeParam>{limits::max()});
    EXPECT_EQ(converted<TypeParam>(std::vector<std::int64_t>{least}),
              std::vector<TypeParam>{limits::min()});
}

TEST(ConversionOfIntegers, ClampsWhereTheTargetIsNarrower) {
    EXPECT_EQ(converted<std::int8_t>(std::vector<std::int32_t>{300, 128, 127, -128, -129}),
              (std::vector<std::int8_t>{127, 127, 127, -128, -128}));
    EXPECT_EQ(converted<std::int16_t>(std::vector<std::uint16_t>{65535, 32768, 32767}),
              (std::vector<std::int16_t>{32767, 32767, 32767}));
}

TEST(ConversionOfIntegers, ClampsNegativeOnesToZeroWhereThereIsNoSign) {
    EXPECT_EQ(converted<std::uint16_t>(std::vector<std::int32_t>{-1, 65536, 65535}),
              (std::vector<std::uint16_t>{0, 65535, 65535}));
    EXPECT_EQ(converted<std::uint64_t>(std::vector<std::int8_t>{-1, 0, 127}),
              (std::vector<std::uint64_t>{0, 0, 127}));
}

TEST(ConversionOfIntegers, ClampsWhenWriting) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", shape({3}), data_type::int16);
    give<std::int64_t>(attribute, {70000, -70000, 7});
    EXPECT_EQ(values<std::int16_t>(attribute), (std::vector<std::int16_t>{32767, -32768, 7}));
}

TEST(ConversionOfReals, KeepsWhatHasNoNumber) {
    const auto read =
        converted<float>(std::vector<double>{not_a_number, infinity, -infinity, 1e300});
    EXPECT_TRUE(std::isnan(read[0]));
    EXPECT_EQ(read[1], std::numeric_limits<float>::infinity());
    EXPECT_EQ(read[2], -std::numeric_limits<float>::infinity());
    EXPECT_EQ(read[3], std::numeric_limits<float>::infinity());
}

TEST(ConversionOfReals, KeepsTheSignOfZero) {
    EXPECT_TRUE(std::signbit(converted<double>(std::vector<float>{-0.0F})[0]));
}

} // namespace
