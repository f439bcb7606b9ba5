#include "plugins/c3d/samples/encoder.hpp"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/c3d/samples/encode_kernels.hpp"
#include "plugins/c3d/samples/lanes_portable.hpp"
#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

using c3d::encoder;
using c3d_test::append;
using c3d_test::byte_vector;
using c3d_test::intel;
using c3d_test::real;

constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<float>::infinity();

class EncodeKernels : public testing::TestWithParam<bool> {
  protected:
    [[nodiscard]] static encoder tested() {
        return GetParam() ? c3d::encoder_for_processor() : c3d::encoder_of<c3d::portable_lanes>();
    }
};

byte_vector reals(const std::vector<float>& values) {
    byte_vector bytes;
    for (auto value : values)
        append(bytes, real(intel, value));
    return bytes;
}

byte_vector one_point(const encoder& tested, float x, float y, float z, float word) {
    byte_vector bytes(16);
    tested.points({{&x, &y, &z}, &word, 1}, bytes.data(), 16);
    return bytes;
}

TEST_P(EncodeKernels, WritesRecordsOfFourReals) {
    EXPECT_EQ(one_point(tested(), 100.5F, -20.25F, 950.0F, 773.0F),
              c3d_test::hex("00 00 C9 42 00 00 A2 C1 00 80 6D 44 00 40 41 44"));
}

TEST_P(EncodeKernels, WritesInvalidSamplesAsTheFormatAsks) {
    const auto invalid = c3d_test::hex("00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 BF");
    EXPECT_EQ(one_point(tested(), nan, 1.0F, 2.0F, 5.0F), invalid);
    EXPECT_EQ(one_point(tested(), 1.0F, infinity, 2.0F, 5.0F), invalid);
    EXPECT_EQ(one_point(tested(), 1.0F, 2.0F, -nan, -1.0F), invalid);
}

TEST_P(EncodeKernels, GivesValidSamplesAFourthWordOfAValidOne) {
    for (float word : {-1.0F, nan, 32768.0F, infinity})
        EXPECT_EQ(one_point(tested(), 1.0F, 2.0F, 3.0F, word), reals({1, 2, 3, 0})) << word;
    EXPECT_EQ(one_point(tested(), 1.0F, 2.0F, 3.0F, 0.84F), reals({1, 2, 3, 0.84F}));
}

TEST_P(EncodeKernels, WritesAnyNumberOfFramesAndNothingElse) {
    for (std::size_t frames = 0; frames < 11; ++frames) {
        std::vector<float> x(frames);
        std::vector<float> y(frames);
        std::vector<float> z(frames);
        std::vector<float> words(frames);
        byte_vector expected(20 * 12, std::byte{7});
        for (std::size_t i = 0; i < frames; ++i) {
            const auto value = static_cast<float>(i);
            x[i] = value;
            y[i] = value + 100.0F;
            z[i] = i % 3 == 2 ? nan : value + 200.0F;
            words[i] = value + 300.0F;
            const auto record =
                i % 3 == 2 ? reals({0, 0, 0, -1}) : reals({x[i], y[i], z[i], words[i]});
            std::copy(record.begin(), record.end(),
                      expected.begin() + static_cast<std::ptrdiff_t>(20 * i));
        }
        byte_vector bytes(20 * 12, std::byte{7});
        tested().points({{x.data(), y.data(), z.data()}, words.data(), frames}, bytes.data(), 20);
        EXPECT_EQ(bytes, expected) << frames;
    }
}

TEST_P(EncodeKernels, WritesAnyNumberOfColumnsAndRows) {
    for (std::size_t count = 1; count <= 4; ++count) {
        for (std::size_t rows = 0; rows < 10; ++rows) {
            std::vector<std::vector<float>> columns(4, std::vector<float>(rows));
            byte_vector expected(32 * 10, std::byte{7});
            for (std::size_t row = 0; row < rows; ++row) {
                for (std::size_t column = 0; column < count; ++column) {
                    columns[column][row] = static_cast<float>(10 * row + column);
                    const auto bytes = real(intel, columns[column][row]);
                    std::copy(bytes.begin(), bytes.end(),
                              expected.begin() +
                                  static_cast<std::ptrdiff_t>(32 * row + 8 + 4 * column));
                }
            }
            byte_vector bytes(32 * 10, std::byte{7});
            std::vector<std::byte*> places;
            for (std::size_t row = 0; row < rows; ++row)
                places.push_back(bytes.data() + 32 * row);
            c3d::column_run run{{}, count};
            for (std::size_t column = 0; column < count; ++column)
                run.columns[column] = columns[column].data();
            tested().columns(run, places, 8);
            EXPECT_EQ(bytes, expected) << count << " × " << rows;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllLanes, EncodeKernels, testing::Bool());

} // namespace
