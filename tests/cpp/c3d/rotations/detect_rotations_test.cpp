#include "plugins/c3d/rotations/detect_rotations.hpp"

#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d_test::parameter_writer;
using c3d_test::reading;
using c3d_test::trial;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNan;

constexpr int rotation = 9;
constexpr auto segments = "Format/Data/Skeleton/Segments";

const anvil::json usual_parameters = {{"callable_unit", "org.c3d.detect-rotations"},
                                      {"SourceGroup", "Format"},
                                      {"DestinationGroup", "Format/Data/Skeleton"}};

reading detect(const c3d_test::byte_vector& bytes) {
    auto found = c3d_test::read(bytes);
    EXPECT_TRUE(found.status) << found.status.message(" ");
    auto root = found.store.root();
    found.status = c3d::detect_rotations().evaluate(root, usual_parameters);
    EXPECT_TRUE(found.status) << found.status.message(" ");
    return found;
}

/// Two points' worth of nothing, `rows` rows of rotations of `labels`. Element k of segment s in
/// row r is 1000 r + 100 s + k; every reliability is 1.
c3d_test::byte_vector file_with_rotations(const std::vector<std::string>& labels, int rows,
                                          int ratio,
                                          c3d::number_format format = c3d::number_format::intel) {
    trial file;
    file.format = format;
    file.samples.assign(static_cast<std::size_t>(rows / ratio), {1, 2, 3, 0});
    file.more_parameters = [&](parameter_writer& writer) {
        writer.group(rotation, "ROTATION")
            .words(rotation, "USED", {static_cast<int>(labels.size())});
        writer.texts(rotation, "LABELS", labels, 8).words(rotation, "RATIO", {ratio});
        writer.words(rotation, "DATA_START", {4});
    };
    auto bytes = file.bytes();
    EXPECT_EQ(bytes.size(), 3 * 512U);
    for (int row = 0; row < rows; ++row) {
        for (std::size_t segment = 0; segment < labels.size(); ++segment) {
            for (int k = 0; k < 17; ++k) {
                const auto value = 1000 * row + 100 * static_cast<int>(segment) + k;
                c3d_test::append(
                    bytes, c3d_test::real(format, k == 16 ? 1.0F : static_cast<float>(value)));
            }
        }
    }
    c3d_test::pad_block(bytes);
    return bytes;
}

class RotationsOfEveryProcessor : public testing::TestWithParam<c3d::number_format> {};

TEST_P(RotationsOfEveryProcessor, AreColumnsRowsAndSamples) {
    const auto found = detect(file_with_rotations({"pelvis", "l_thigh"}, 6, 2, GetParam()));
    constexpr auto set = "Format/Data/Skeleton/Segments/l_thigh/T_SCS";
    EXPECT_THAT(found.shape(set), ElementsAre(4, 4, 6));
    const auto values = found.values(set);
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t sample = 0; sample < 6; ++sample) {
                EXPECT_EQ(values[(column * 4 + row) * 6 + sample],
                          1000.0 * static_cast<double>(sample) + 100.0 +
                              static_cast<double>(4 * column + row));
            }
        }
    }
    EXPECT_TRUE(found.warnings.empty());
}

INSTANTIATE_TEST_SUITE_P(Processors, RotationsOfEveryProcessor,
                         testing::Values(c3d::number_format::intel, c3d::number_format::dec,
                                         c3d::number_format::mips));

TEST(DetectRotations, SetsAreDescribed) {
    const auto found = detect(file_with_rotations({"pelvis"}, 6, 2));
    constexpr auto set = "Format/Data/Skeleton/Segments/pelvis/T_SCS";
    EXPECT_THAT(found.texts(set, "Label"), ElementsAre("pelvis"));
    EXPECT_THAT(found.numbers(set, "SampleRate"), ElementsAre(200.0));
    EXPECT_THAT(found.numbers(set, "StartTime"), ElementsAre(0.0));
    EXPECT_THAT(found.numbers(set, "Reliability"), ElementsAre(1, 1, 1, 1, 1, 1));
    EXPECT_THAT(found.attribute(set, "Reliability").shape().dimensions(), ElementsAre(6));
}

TEST(DetectRotations, GroupsAreNamedByTheirLabels) {
    const auto found = detect(file_with_rotations({"a/b", "c", "c", ""}, 2, 1));
    EXPECT_THAT(found.store.root().retrieve_group(segments).list_group_children_name(),
                ElementsAre("a_b", "c", "c_2", "unamed_3"));
    EXPECT_THAT(found.texts("Format/Data/Skeleton/Segments/a_b/T_SCS", "Label"),
                ElementsAre("a/b"));
}

TEST(DetectRotations, InvalidSamplesAreNaN) {
    auto bytes = file_with_rotations({"pelvis"}, 2, 1);
    const auto negative = c3d_test::real(c3d::number_format::intel, -1.0F);
    std::copy(negative.begin(), negative.end(), bytes.begin() + 3 * 512 + 64);
    const auto found = detect(bytes);
    const auto values = found.values("Format/Data/Skeleton/Segments/pelvis/T_SCS");
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_TRUE(std::isnan(values[2 * i]));
        EXPECT_EQ(values[2 * i + 1], 1000.0 + static_cast<double>(i));
    }
    EXPECT_THAT(found.numbers("Format/Data/Skeleton/Segments/pelvis/T_SCS", "Reliability"),
                ElementsAre(-1.0, 1.0));
}

TEST(DetectRotations, ReliabilityThatIsNoNumberIsInvalid) {
    auto bytes = file_with_rotations({"pelvis"}, 1, 1);
    const auto nan = c3d_test::hex("00 00 C0 7F");
    std::copy(nan.begin(), nan.end(), bytes.begin() + 3 * 512 + 64);
    const auto found = detect(bytes);
    EXPECT_THAT(found.values("Format/Data/Skeleton/Segments/pelvis/T_SCS"), Each(IsNan()));
}

TEST(DetectRotations, CutSectionGivesTheRowsThatAreThere) {
    auto bytes = file_with_rotations({"pelvis"}, 10, 1);
    bytes.resize(3 * 512 + 7 * 68 + 30);
    const auto found = detect(bytes);
    EXPECT_THAT(found.shape("Format/Data/Skeleton/Segments/pelvis/T_SCS"), ElementsAre(4, 4, 7));
    EXPECT_TRUE(found.warns_about("10 rotations of 1 segments expected, the file holds 7"));
}

TEST(DetectRotations, SectionBehindTheDataIsFoundThoughItsPointerIsWrong) {
    auto bytes = file_with_rotations({"pelvis"}, 2, 1);
    const auto good = detect(bytes).values("Format/Data/Skeleton/Segments/pelvis/T_SCS");
    // ROTATION:DATA_START points into the parameters.
    const auto four = c3d_test::characters("DATA_START");
    auto last = std::find_end(bytes.begin(), bytes.begin() + 1024, four.begin(), four.end());
    *(last + 10 + 4) = std::byte{2};
    const auto found = detect(bytes);
    EXPECT_EQ(found.values("Format/Data/Skeleton/Segments/pelvis/T_SCS"), good);
    EXPECT_TRUE(found.warns_about("ROTATION:DATA_START is block 2"));
}

TEST(DetectRotations, WithoutRotationsThereIsTheEmptyGroup) {
    const auto found = detect(trial().bytes());
    EXPECT_THAT(found.store.root().retrieve_group(segments).list_group_children_name(), IsEmpty());
}

TEST(DetectRotations, EmptyStoreGetsTheEmptyGroup) {
    strata::data_store store;
    auto root = store.root();
    EXPECT_TRUE(c3d::detect_rotations().evaluate(root, usual_parameters));
    EXPECT_TRUE(root.exists_group(segments));
}

TEST(DetectRotations, SecondEvaluationReplacesTheSegments) {
    auto found = detect(file_with_rotations({"pelvis"}, 2, 1));
    auto root = found.store.root();
    EXPECT_TRUE(c3d::detect_rotations().evaluate(root, usual_parameters));
    EXPECT_THAT(root.retrieve_group(segments).list_group_children_name(), ElementsAre("pelvis"));
}

TEST(DetectRotations, MissingParameterIsNamed) {
    strata::data_store store;
    auto root = store.root();
    const auto status = c3d::detect_rotations().evaluate(root, {{"SourceGroup", 5}});
    EXPECT_EQ(status.message(""),
              "org.c3d.detect-rotations: a text \"SourceGroup\" is expected among the parameters");
}

} // namespace
