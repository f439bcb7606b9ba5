#include "plugins/c3d/samples/encoder.hpp"

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/c3d/parameters/written_form.hpp"
#include "plugins/c3d/samples/encode_kernels.hpp"
#include "plugins/c3d/samples/lanes_portable.hpp"
#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

using c3d::encoder;
using c3d::number_format;
using c3d::sample_storage;
using c3d::written_form;
using c3d_test::append;
using c3d_test::byte_vector;
using c3d_test::intel;
using c3d_test::real;

constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<float>::infinity();

class EncodeKernels : public testing::TestWithParam<bool> {
  protected:
    [[nodiscard]] static encoder tested() {
        return of({number_format::intel, sample_storage::real});
    }
    [[nodiscard]] static encoder of(written_form form) {
        return GetParam() ? c3d::encoder_for(form.format, form.storage)
                          : c3d::encoder_of<c3d::portable_lanes>(form.format, form.storage);
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

constexpr std::array all_formats = {number_format::intel, number_format::dec, number_format::mips};

TEST_P(EncodeKernels, WritesRealsOfEveryProcessor) {
    const std::array values = {100.5F, -20.25F, 1e-38F, 1.5e38F, 0.0F, -0.1F, 1e-45F};
    for (auto format : all_formats) {
        const auto tested = of({format, sample_storage::real});
        for (std::size_t i = 0; i + 3 < values.size(); ++i) {
            const auto* at = values.data() + i;
            std::array<std::byte, 16> rows{};
            const std::array<std::byte*, 1> row = {rows.data()};
            tested.columns({{at, at + 1, at + 2, at + 3}, 4}, row, 0);
            for (std::size_t column = 0; column < 4; ++column) {
                const auto wanted = values[i + column] == 1e-45F && format == number_format::dec
                                        ? 0.0F // less than any number of DEC files
                                        : values[i + column];
                EXPECT_EQ(c3d::read_real(format, rows.data() + 4 * column), wanted);
            }
        }
    }
}

TEST_P(EncodeKernels, WritesWhatDecCannotHoldAsTheReservedOperand) {
    const auto tested = of({number_format::dec, sample_storage::real});
    const std::array values = {nan, infinity, 2e38F, -infinity};
    byte_vector bytes(16);
    const std::array<std::byte*, 1> row = {bytes.data()};
    tested.columns({{&values[0], &values[1], &values[2], &values[3]}, 4}, row, 0);
    EXPECT_EQ(bytes, c3d_test::hex("00 80 00 00 00 80 00 00 00 80 00 00 00 80 00 00"));
}

TEST_P(EncodeKernels, WritesTheNearestIntegers) {
    const std::array values = {-32768.0F, 65535.0F, 2.5F, -1.6F, 3.4F};
    const std::array words = {-32768, -1, 2, -2, 3}; // the second one has no sign
    for (auto format : all_formats) {
        const auto tested = of({format, sample_storage::integer});
        for (std::size_t count = 1; count <= 4; ++count) {
            for (std::size_t first = 0; first + count <= values.size(); ++first) {
                byte_vector bytes(8, std::byte{7});
                byte_vector expected;
                c3d::column_run run{{}, count};
                for (std::size_t i = 0; i < count; ++i) {
                    run.columns[i] = &values[first + i];
                    append(expected, c3d_test::word(format, words[first + i]));
                }
                expected.resize(8, std::byte{7});
                const std::array<std::byte*, 1> row = {bytes.data()};
                tested.columns(run, row, 0);
                EXPECT_EQ(bytes, expected) << count << " from " << first;
            }
        }
    }
}

TEST_P(EncodeKernels, WritesPointsAsIntegers) {
    const std::array<float, 3> x = {1.4F, nan, -32768.0F};
    const std::array<float, 3> y = {-2.6F, 1.0F, 32767.0F};
    const std::array<float, 3> z = {0.0F, 1.0F, 7.0F};
    const std::array<float, 3> words = {773.0F, 5.0F, 32767.8F};
    for (auto format : all_formats) {
        byte_vector expected;
        for (auto number : {1, -3, 0, 773, 0, 0, 0, -1, -32768, 32767, 7, 0})
            append(expected, c3d_test::word(format, number));
        byte_vector bytes(24);
        of({format, sample_storage::integer})
            .points({{x.data(), y.data(), z.data()}, words.data(), 3}, bytes.data(), 8);
        EXPECT_EQ(bytes, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(AllLanes, EncodeKernels, testing::Bool());

} // namespace
