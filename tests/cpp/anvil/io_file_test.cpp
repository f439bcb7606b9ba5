#include <array>
#include <cstddef>
#include <fstream>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <anvil/io_file.hpp>
#include <anvil/path_text.hpp>

#include "tests/cpp/anvil/support/has_reason.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::io_file;
using anvil_test::content_of;
using anvil_test::has_reason;
using anvil_test::make_file;
using anvil_test::temporary_folder;

std::span<const std::byte> bytes_of(std::string_view text) {
    return std::as_bytes(std::span{text.data(), text.size()});
}

/// What read_at gives at `offset` for a buffer of `length` bytes, without the part that it left
/// alone.
std::string read(io_file& file, std::uint64_t offset, std::size_t length) {
    std::string text(length, '?');
    const auto result = file.read_at(offset, std::as_writable_bytes(std::span{text}));
    EXPECT_FALSE(result.error) << result.error.message();
    EXPECT_EQ(text.substr(result.bytes), std::string(length - result.bytes, '?'));
    return text.substr(0, result.bytes);
}

TEST(IoFile, ReadsFromAnyOffset) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "0123456789");
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_read);
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.size(), 10U);
    EXPECT_EQ(read(file, 7, 2), "78");
    EXPECT_EQ(read(file, 0, 10), "0123456789");
}

TEST(IoFile, ReadingBeyondTheEndGivesFewerBytesWithoutAnError) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "0123456789");
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_read);
    EXPECT_EQ(read(file, 8, 4), "89");
    EXPECT_EQ(read(file, 10, 4), "");
    EXPECT_EQ(read(file, std::numeric_limits<std::uint64_t>::max(), 4), "");
}

TEST(IoFile, ReadsBeyondFourGibibytes) {
    constexpr std::uint64_t offset = (std::uint64_t{9} << 29) + 3; // 4.5 GiB
    const temporary_folder folder;
    {
        // Not by std::filesystem::resize_file, which counts in 32 bits in one library for Windows.
        std::ofstream long_file{folder / "long.c3d", std::ios::binary};
        long_file.seekp(static_cast<std::streamoff>(offset)) << "far";
    }
    io_file file;
    file.open(folder / "long.c3d", anvil::io_read);
    EXPECT_EQ(file.size(), offset + 3);
    EXPECT_EQ(read(file, offset, 8), "far");
    EXPECT_EQ(read(file, offset - 1, 2), (std::string{'\0', 'f'}));
}

TEST(IoFile, EmptyFileIsOpenedAndHasNoBytes) {
    const temporary_folder folder;
    make_file(folder / "empty.c3d", "");
    io_file file;
    file.open(folder / "empty.c3d", anvil::io_read);
    EXPECT_TRUE(file.is_open());
    EXPECT_EQ(file.size(), 0U);
    EXPECT_EQ(read(file, 0, 1), "");
}

TEST(IoFile, MissingFileIsNotOpenedForReading) {
    const temporary_folder folder;
    io_file file;
    file.open(folder / "missing.c3d", anvil::io_read);
    EXPECT_FALSE(file.is_open());
    EXPECT_FALSE(std::filesystem::exists(folder / "missing.c3d"));
}

TEST(IoFile, FolderIsNotOpened) {
    const temporary_folder folder;
    io_file file;
    file.open(folder.path(), anvil::io_read);
    EXPECT_FALSE(file.is_open());
    file.open(folder.path(), anvil::io_write);
    EXPECT_FALSE(file.is_open());
}

TEST(IoFile, UnknownModesOpenNothing) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "kept");
    for (const int mode : {0, 3, -1}) {
        io_file file;
        file.open(folder / "walk.c3d", mode);
        EXPECT_FALSE(file.is_open()) << mode;
    }
    EXPECT_EQ(content_of(folder / "walk.c3d"), "kept");
}

TEST(IoFile, WritesAFileFromItsStart) {
    const temporary_folder folder;
    io_file file;
    file.open(folder / "new.c3d", anvil::io_write);
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.write(bytes_of("walk ")).bytes, 5U);
    EXPECT_EQ(file.write(bytes_of("")).bytes, 0U);
    EXPECT_EQ(file.write(bytes_of("on")).bytes, 2U);
    EXPECT_FALSE(file.commit());
    EXPECT_FALSE(file.is_open());
    EXPECT_EQ(content_of(folder / "new.c3d"), "walk on");
}

std::vector<std::string> names_in(const temporary_folder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.push_back(entry.path().filename().string());
    return names;
}

TEST(IoFile, CommittingReplacesWhatTheFileHeld) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "a longer content");
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    EXPECT_FALSE(file.write(bytes_of("short")).error);
    EXPECT_EQ(content_of(folder / "walk.c3d"), "a longer content");
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(content_of(folder / "walk.c3d"), "short");
    EXPECT_EQ(names_in(folder), std::vector<std::string>{"walk.c3d"});
}

TEST(IoFile, ClosingWithoutCommitLeavesTheOldFileAndNothingElse) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "old");
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    EXPECT_FALSE(file.write(bytes_of("new")).error);
    file.close();
    EXPECT_EQ(content_of(folder / "walk.c3d"), "old");
    file.open(folder / "other.c3d", anvil::io_write);
    file.close();
    EXPECT_EQ(names_in(folder), std::vector<std::string>{"walk.c3d"});
}

TEST(IoFile, FileThatIsOpenForReadingKeepsItsContentWhileItIsReplaced) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "old");
    io_file reader;
    reader.open(folder / "walk.c3d", anvil::io_read);
    io_file writer;
    writer.open(folder / "walk.c3d", anvil::io_write);
    EXPECT_FALSE(writer.write(bytes_of("newer")).error);
    EXPECT_FALSE(writer.commit());
    EXPECT_EQ(read(reader, 0, 8), "old");
    EXPECT_EQ(content_of(folder / "walk.c3d"), "newer");
}

TEST(IoFile, OnlyAFileThatIsBeingWrittenCanBeCommitted) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "kept");
    io_file file;
    EXPECT_TRUE(has_reason(file.commit(), std::errc::bad_file_descriptor));
    file.open(folder / "walk.c3d", anvil::io_read);
    EXPECT_TRUE(has_reason(file.commit(), std::errc::bad_file_descriptor));
    EXPECT_TRUE(file.is_open());
}

TEST(IoFile, FileInAMissingFolderIsNotOpenedForWriting) {
    const temporary_folder folder;
    io_file file;
    file.open(folder / "missing" / "walk.c3d", anvil::io_write);
    EXPECT_FALSE(file.is_open());
}

TEST(IoFile, OpeningAnotherFileClosesTheFirst) {
    const temporary_folder folder;
    make_file(folder / "first.c3d", "first");
    io_file file;
    file.open(folder / "first.c3d", anvil::io_read);
    file.open(folder / "missing.c3d", anvil::io_read);
    EXPECT_FALSE(file.is_open());
    EXPECT_EQ(file.size(), 0U);
}

TEST(IoFile, ClosedFileGivesAnErrorAndNoBytes) {
    io_file file;
    std::array<std::byte, 4> buffer{};
    EXPECT_FALSE(file.is_open());
    EXPECT_TRUE(has_reason(file.read_at(0, buffer).error, std::errc::bad_file_descriptor));
    EXPECT_TRUE(has_reason(file.write(buffer).error, std::errc::bad_file_descriptor));
    EXPECT_EQ(file.size(), 0U);
}

TEST(IoFile, DirectionMustBeTheOneThatWasOpened) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "kept");
    std::array<std::byte, 4> buffer{};
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_read);
    EXPECT_TRUE(has_reason(file.write(buffer).error, std::errc::bad_file_descriptor));
    file.open(folder / "other.c3d", anvil::io_write);
    EXPECT_TRUE(has_reason(file.read_at(0, buffer).error, std::errc::bad_file_descriptor));
    EXPECT_EQ(content_of(folder / "walk.c3d"), "kept");
}

TEST(IoFile, NameIsThePathOfTheLastOpenAlsoWhenItFailed) {
    io_file file;
    EXPECT_EQ(file.name(), "");
    file.open(anvil::path_from_text("missing/m\xc3\xa4rz.c3d"), anvil::io_read);
    EXPECT_EQ(file.name(), "missing/m\xc3\xa4rz.c3d");
}

} // namespace
