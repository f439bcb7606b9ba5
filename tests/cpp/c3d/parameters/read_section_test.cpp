#include "plugins/c3d/parameters/read_section.hpp"

#include <string>

#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/parameter_writer.hpp"

namespace {

using c3d::number_format;
using c3d_test::byte_vector;
using c3d_test::hex;
using c3d_test::parameter_writer;

/// The section, kept because the records refer to it.
struct walked {
    explicit walked(byte_vector bytes, std::uint64_t data_start = 0) : section(std::move(bytes)) {
        records = c3d::walk_records(section, {512, data_start}, number_format::intel, notes);
    }
    explicit walked(const parameter_writer& writer) : walked(writer.section()) {}

    byte_vector section;
    schema::warnings notes;
    c3d::section_records records;
};

TEST(ReadSection, RecordsOfTheFormatGuideAreRead) {
    // Group POINT with a description, POINT:USED = 26 locked, an end mark.
    const walked found(hex("01 50 01 54"
                           "05 FF 50 4F 49 4E 54 05 00 02 33 44"
                           "FC 01 55 53 45 44 08 00 02 00 1A 00 01 6E"
                           "00 00 00 00"));
    ASSERT_EQ(found.records.groups.size(), 1U);
    EXPECT_EQ(found.records.groups[0].name, "POINT");
    EXPECT_EQ(found.records.groups[0].description, "3D");
    EXPECT_EQ(found.records.groups[0].id, 1);
    EXPECT_FALSE(found.records.groups[0].locked);
    ASSERT_EQ(found.records.parameters.size(), 1U);
    EXPECT_EQ(found.records.parameters[0].name, "USED");
    EXPECT_EQ(found.records.parameters[0].description, "n");
    EXPECT_TRUE(found.records.parameters[0].locked);
    EXPECT_EQ(found.records.parameters[0].number(0), 26.0);
    EXPECT_EQ(found.records.parameters[0].offset, 512U + 16U);
    EXPECT_FALSE(found.records.broken);
    EXPECT_TRUE(found.notes.texts().empty());
}

TEST(ReadSection, DistanceZeroMarksTheLastRecordWhichCounts) {
    parameter_writer writer;
    writer.group(1, "A").words(1, "X", {7}).with_next(0).raw(hex("01 01 42 07 00 02 00 05 00 00"));
    const walked found(writer);
    ASSERT_EQ(found.records.parameters.size(), 1U);
    EXPECT_EQ(found.records.parameters[0].number(0), 7.0);
}

TEST(ReadSection, DistanceIsUnsigned) {
    parameter_writer writer;
    writer.group(1, "A")
        .texts(1, "MANY", std::vector<std::string>(255, std::string(200, 'x')), 200)
        .words(1, "LAST", {3});
    const walked found(writer);
    ASSERT_EQ(found.records.parameters.size(), 2U);
    EXPECT_EQ(found.records.parameters[0].text(254), std::string(200, 'x'));
    EXPECT_EQ(found.records.parameters[1].number(0), 3.0);
}

TEST(ReadSection, GapAfterARecordIsSkipped) {
    parameter_writer writer;
    writer.group(1, "A").words(1, "X", {7}).with_next(12).raw(hex("AA BB CC DD EE"));
    writer.words(1, "Y", {8});
    const walked found(writer);
    ASSERT_EQ(found.records.parameters.size(), 2U);
    EXPECT_TRUE(found.notes.texts().empty());
}

TEST(ReadSection, RecordThatReachesIntoTheNextIsCutThere) {
    // Announces three words; the next record begins behind two.
    parameter_writer writer;
    writer.group(1, "A").record(1, "X", 2, {3}, hex("01 00 02 00 03 00")).with_next(8);
    auto bytes = writer.section();
    const auto next = hex("01 01 59 07 00 02 00 09 00 00");
    const auto place = 4 + 6 + 3 + 8; // head, group, what precedes the distance, the distance
    std::copy(next.begin(), next.end(), bytes.begin() + place);
    const walked found(bytes);
    ASSERT_EQ(found.records.parameters.size(), 2U);
    EXPECT_EQ(found.records.parameters[1].name, "Y");
    EXPECT_EQ(found.records.parameters[1].number(0), 9.0);
    EXPECT_EQ(found.notes.texts().size(), 2U);
}

TEST(ReadSection, WrongDistanceBeforeAGoodRecordIsMended) {
    parameter_writer writer;
    writer.group(1, "A").words(1, "X", {7}).with_next(300).words(1, "Y", {8});
    const walked found(writer);
    ASSERT_EQ(found.records.parameters.size(), 2U);
    EXPECT_EQ(found.notes.texts().size(), 1U);
}

TEST(ReadSection, ChainThatLeadsNowhereEndsThere) {
    parameter_writer writer;
    writer.group(1, "A").words(1, "X", {7}).with_next(9).raw(hex("01 02 03 04 05 06 07 08"));
    const walked found(writer);
    EXPECT_EQ(found.records.parameters.size(), 1U);
    EXPECT_TRUE(found.records.broken);
    EXPECT_EQ(found.notes.texts().size(), 1U);
}

TEST(ReadSection, RecordsMayFillTheSectionUpToTheData) {
    parameter_writer writer;
    writer.group(1, "A").texts(1, "X", {"a", "b", "c", "d"}, 123); // 4 + 6 + 10 + 492 bytes
    auto bytes = writer.section();
    bytes.resize(512);
    c3d_test::append(bytes, hex("05 07 41 42 43 44 45 46")); // data that look like a record
    const walked found(bytes, 512 + 512);
    EXPECT_EQ(found.records.parameters.size(), 1U);
    EXPECT_FALSE(found.records.broken);
}

TEST(ReadSection, GroupIdsThatCannotBeAreLeftOut) {
    parameter_writer writer;
    writer.group(128, "A").words(0, "X", {7}).words(3, "Y", {8});
    const walked found(writer);
    EXPECT_TRUE(found.records.groups.empty());
    ASSERT_EQ(found.records.parameters.size(), 1U);
    EXPECT_EQ(found.records.parameters[0].name, "Y");
    EXPECT_EQ(found.notes.texts().size(), 2U);
}

TEST(ReadSection, UnknownElementTypeIsLeftOut) {
    parameter_writer writer;
    writer.record(1, "X", 3, {}, hex("00 00 00")).words(1, "Y", {8});
    const walked found(writer);
    ASSERT_EQ(found.records.parameters.size(), 1U);
    EXPECT_EQ(found.records.parameters[0].name, "Y");
}

TEST(ReadSection, SevenDimensionsAreKeptAndEightAreNot) {
    parameter_writer writer;
    writer.words(1, "X", {5, 6}, {1, 1, 1, 2, 1, 1, 1});
    writer.words(1, "Z", {5, 6}, {1, 1, 1, 2, 1, 1, 1, 1}).words(1, "Y", {8});
    const walked found(writer);
    ASSERT_EQ(found.records.parameters.size(), 2U);
    EXPECT_EQ(found.records.parameters[0].dimensions.count(), 7U);
    EXPECT_EQ(found.records.parameters[0].number(1), 6.0);
    EXPECT_EQ(found.records.parameters[1].name, "Y");
}

TEST(ReadSection, TextWithoutDimensionsMayHaveNoCharacter) {
    parameter_writer writer;
    writer.record(1, "NONE", -1, {}, {}).record(1, "ONE", -1, {}, hex("66")).words(1, "Y", {8});
    const walked found(writer);
    ASSERT_EQ(found.records.parameters.size(), 3U);
    EXPECT_EQ(found.records.parameters[0].text(0), "");
    EXPECT_EQ(found.records.parameters[1].text(0), "f");
    EXPECT_TRUE(found.notes.texts().empty());
}

TEST(ReadSection, SectionCutAtEveryLengthIsReadAsFarAsItGoes) {
    parameter_writer writer;
    writer.group(1, "POINT", "points").words(1, "USED", {2});
    writer.texts(1, "LABELS", {"LASI", "RASI"}, 4).reals(1, "RATE", {100.0F});
    const auto whole = writer.section();
    std::size_t most = 0;
    for (std::size_t length = 0; length <= 4 + writer.records().size(); ++length) {
        const walked found(byte_vector(whole.begin(), whole.begin() + static_cast<int>(length)));
        const auto count = found.records.groups.size() + found.records.parameters.size();
        EXPECT_GE(count + 1, most) << length; // a record may be given up once it is seen to be cut
        most = std::max(most, count);
        for (const auto& item : found.records.parameters) {
            EXPECT_LE(item.data_offset + item.data.size(), 512 + length);
        }
    }
    EXPECT_EQ(most, 4U);
}

TEST(ReadSection, EndlessRecordsAreBounded) {
    byte_vector bytes = hex("01 50 FF 54");
    for (int i = 0; i < 40000; ++i)
        c3d_test::append(bytes, hex("01 FF 41 03 00 00"));
    const walked found(bytes);
    EXPECT_EQ(found.records.groups.size(), 32768U);
    EXPECT_EQ(found.notes.texts().size(), 1U);
}

} // namespace
