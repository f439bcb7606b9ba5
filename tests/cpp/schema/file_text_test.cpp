#include "schema/file_text.hpp"

#include <string>

#include <gtest/gtest.h>

namespace {

using schema::as_utf8;
using schema::is_utf8;
using schema::without_padding;

TEST(WithoutPadding, CutsAtTheFirstNulAndTrimsTrailingBlanks) {
    EXPECT_EQ(without_padding("LASI    "), "LASI");
    EXPECT_EQ(without_padding(std::string_view("LASI \0garbage", 13)), "LASI");
    EXPECT_EQ(without_padding("    "), "");
    EXPECT_EQ(without_padding(""), "");
}

TEST(WithoutPadding, LeadingBlanksStay) { EXPECT_EQ(without_padding("  a b  "), "  a b"); }

TEST(AsUtf8, AsciiAndUtf8StayAsTheyAre) {
    EXPECT_EQ(as_utf8("LASI"), "LASI");
    EXPECT_EQ(as_utf8("M\xC3\xBCller"), "M\xC3\xBCller");
    EXPECT_EQ(as_utf8("\xE2\x82\xAC"), "\xE2\x82\xAC");
    EXPECT_EQ(as_utf8("\xF0\x9F\x98\x80"), "\xF0\x9F\x98\x80");
}

TEST(AsUtf8, OtherTextIsWindows1252) {
    EXPECT_EQ(as_utf8("mm/s\xB2"), "mm/s\xC2\xB2");
    EXPECT_EQ(as_utf8("M\xFCller"), "M\xC3\xBCller");
    EXPECT_EQ(as_utf8("\x80 \x93quoted\x94"), "\xE2\x82\xAC \xE2\x80\x9Cquoted\xE2\x80\x9D");
}

TEST(AsUtf8, LatinLetterAtTheEndIsNoCutCharacter) { EXPECT_EQ(as_utf8("caf\xE9"), "caf\xC3\xA9"); }

TEST(AsUtf8, CharacterThatTheFieldCutOffDoesNotSpoilTheRest) {
    EXPECT_EQ(as_utf8("M\xC3\xBCller\xC3"), "M\xC3\xBCller\xC3");
}

TEST(AsUtf8, BytesWithoutACharacterStayAndShowAsInvalid) {
    EXPECT_EQ(as_utf8("a\x81"
                      "b"),
              "a\x81"
              "b");
    EXPECT_FALSE(is_utf8(as_utf8("\xE9\x81")));
    EXPECT_EQ(as_utf8("\xE9\x81"), "\xC3\xA9\x81");
}

TEST(IsUtf8, RefusesOverlongFormsSurrogatesAndWhatLiesBeyond) {
    EXPECT_FALSE(is_utf8("\xC0\x80"));
    EXPECT_FALSE(is_utf8("\xE0\x80\x80"));
    EXPECT_FALSE(is_utf8("\xF0\x80\x80\x80"));
    EXPECT_FALSE(is_utf8("\xED\xA0\x80"));
    EXPECT_FALSE(is_utf8("\xF4\x90\x80\x80"));
    EXPECT_FALSE(is_utf8("\xF5\x80\x80\x80"));
    EXPECT_FALSE(is_utf8("\xC3"));
    EXPECT_TRUE(is_utf8("\xF4\x8F\xBF\xBF"));
}

TEST(StoredText, IsTheTextWhereItIsReadAgain) {
    EXPECT_EQ(schema::as_stored("mm/s\xC2\xB2"), "mm/s\xC2\xB2");
    EXPECT_EQ(schema::as_stored("plain"), "plain");
}

TEST(StoredText, IsWindows1252WhereUtf8WouldBeReadAsSomethingElse) {
    const auto read = schema::as_utf8("caf\xE9 \x81");
    EXPECT_EQ(read, "caf\xC3\xA9 \x81");
    EXPECT_EQ(schema::as_stored(read), "caf\xE9 \x81");
}

TEST(StoredText, HasAOneByteFormOnlyWhereThatIsReadAgain) {
    EXPECT_EQ(schema::as_windows_1252("mm/s\xC2\xB2"), "mm/s\xB2");
    EXPECT_EQ(schema::as_windows_1252("\xE2\x82\xAC"), "\x80");   // the euro sign
    EXPECT_EQ(schema::as_windows_1252("\xCE\xB1"), std::nullopt); // a Greek letter
}

} // namespace
