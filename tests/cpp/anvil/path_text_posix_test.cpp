#include <anvil/path_text.hpp>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(PathText, KeepsLettersOfAllLanguages) {
    const std::string text = "/data/M\xC3\xBCller/\xE6\xAD\xA9.c3d";
    EXPECT_EQ(anvil::path_from_text(text), std::filesystem::path{text});
    EXPECT_EQ(anvil::text_of_path(anvil::path_from_text(text)), text);
}

TEST(PathText, KeepsBytesThatAreNoText) {
    const std::string text = "/data/\xFF\xC3.c3d";
    EXPECT_EQ(anvil::text_of_path(anvil::path_from_text(text)), text);
    EXPECT_EQ(anvil::text_of_path(anvil::path_from_text(text).filename()), "\xFF\xC3.c3d");
}

} // namespace
