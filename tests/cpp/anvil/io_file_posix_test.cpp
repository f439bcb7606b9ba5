#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <anvil/io_file.hpp>

#include "tests/cpp/anvil/support/child_process.hpp"
#include "tests/cpp/anvil/support/process_limits.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::io_file;
using anvil_test::content_of;
using anvil_test::make_file;
using anvil_test::temporary_folder;

TEST(IoFilePosix, PipeIsRefusedWithoutWaitingForItsOtherEnd) {
    const temporary_folder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    io_file file;
    file.open(folder / "pipe", anvil::io_read);
    EXPECT_FALSE(file.is_open());
    file.open(folder / "pipe", anvil::io_write);
    EXPECT_FALSE(file.is_open());
}

TEST(IoFilePosix, DeviceIsRefused) {
    io_file file;
    file.open("/dev/zero", anvil::io_read);
    EXPECT_FALSE(file.is_open());
    file.open("/dev/null", anvil::io_write);
    EXPECT_FALSE(file.is_open());
}

TEST(IoFilePosix, UnreadableFileIsNotOpened) {
    const temporary_folder folder;
    make_file(folder / "secret.c3d", "kept");
    std::filesystem::permissions(folder / "secret.c3d", std::filesystem::perms::none);
    const anvil_test::ordinary_user user;
    io_file file;
    file.open(folder / "secret.c3d", anvil::io_read);
    EXPECT_FALSE(file.is_open());
}

TEST(IoFilePosix, SaysWhyItIsNotOpen) {
    const temporary_folder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    make_file(folder / "file", "");
    for (const int mode : {anvil::io_read, anvil::io_write}) {
        io_file file;
        const auto failure = [&](const std::filesystem::path& path) {
            file.open(path, mode);
            return file.failure();
        };
        EXPECT_EQ(failure(folder / "missing" / "walk.c3d"), std::errc::no_such_file_or_directory);
        EXPECT_EQ(failure(folder / "file" / "walk.c3d"), std::errc::not_a_directory);
        EXPECT_EQ(failure(folder.path()), std::errc::is_a_directory);
        EXPECT_TRUE(failure(folder / "pipe"));
        EXPECT_EQ(failure(folder / std::string(300, 'a')), std::errc::filename_too_long);
        EXPECT_FALSE(failure(folder / "file"));
    }
}

TEST(IoFilePosix, KeepsItsFirstFailureUntilItIsOpenedAgain) {
    const temporary_folder folder;
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    {
        const anvil_test::full_disk disk{700};
        EXPECT_TRUE(file.write(std::vector<std::byte>(1000)).error);
    }
    file.close();
    EXPECT_TRUE(file.commit()); // it is not open
    EXPECT_EQ(file.failure(), std::errc::file_too_large);
    file.open(folder / "walk.c3d", anvil::io_write);
    EXPECT_FALSE(file.failure());
    EXPECT_FALSE(file.commit());
    EXPECT_FALSE(file.failure());
}

TEST(IoFilePosix, FullDiskIsAnErrorWithTheBytesThatWereWritten) {
    const temporary_folder folder;
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    const std::vector<std::byte> bytes(1000);
    const anvil_test::full_disk disk{700};
    const auto result = file.write(bytes);
    EXPECT_EQ(result.bytes, 700U);
    EXPECT_EQ(result.error, std::errc::file_too_large);
}

TEST(IoFilePosix, WhatCouldNotBeWrittenReplacesNothing) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "old");
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    {
        const anvil_test::full_disk disk{700};
        EXPECT_TRUE(file.write(std::vector<std::byte>(1000)).error);
    }
    // The error of the first write stands, though there is room again.
    EXPECT_FALSE(file.write(std::vector<std::byte>(1)).error);
    EXPECT_EQ(file.commit(), std::errc::file_too_large);
    EXPECT_EQ(content_of(folder / "walk.c3d"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{folder.path()}, {}), 1);
}

::mode_t permissions_of(const std::filesystem::path& path) {
    struct ::stat about{};
    return ::stat(path.c_str(), &about) == 0 ? about.st_mode & 07777U : 0;
}

TEST(IoFilePosix, SuccessorHasThePermissionsOfTheOldFile) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "old");
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0640), 0);
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(permissions_of(folder / "walk.c3d"), 0640U);
    EXPECT_EQ(content_of(folder / "walk.c3d"), "");
}

TEST(IoFilePosix, PermissionsOfTheOldFileCountAsTheyAreInTheEnd) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "old");
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0664), 0);
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0600), 0);
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(permissions_of(folder / "walk.c3d"), 0600U);
    EXPECT_EQ(content_of(folder / "walk.c3d"), "");
}

TEST(IoFilePosix, PermissionsOfAnOldFileThatCameMeanwhileCount) {
    const temporary_folder folder;
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    make_file(folder / "walk.c3d", "old");
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0600), 0);
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(permissions_of(folder / "walk.c3d"), 0600U);
}

TEST(IoFilePosix, PermissionsOfAnOldFileThatWentMeanwhileCount) {
    const temporary_folder folder;
    make_file(folder / "walk.c3d", "old");
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0640), 0);
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    std::filesystem::remove(folder / "walk.c3d");
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(permissions_of(folder / "walk.c3d"), 0640U);
}

TEST(IoFilePosix, FileThatWasWriteProtectedMeanwhileIsNotReplaced) {
    const temporary_folder folder;
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    make_file(folder / "walk.c3d", "kept");
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0666), 0);
    io_file file;
    {
        const anvil_test::ordinary_user user;
        file.open(folder / "walk.c3d", anvil::io_write);
        ASSERT_TRUE(file.is_open());
    }
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0444), 0);
    const anvil_test::ordinary_user user;
    EXPECT_EQ(file.commit(), std::errc::permission_denied);
    EXPECT_EQ(content_of(folder / "walk.c3d"), "kept");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{folder.path()}, {}), 1);
}

TEST(IoFilePosix, GroupThatCannotBeKeptIsAnErrorThatNamesItAndTheCause) {
    const temporary_folder folder;
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    make_file(folder / "walk.c3d", "kept");
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0666), 0);
    constexpr ::gid_t other_group = 54202;
    if (::chown((folder / "walk.c3d").c_str(), ::getuid(), other_group) != 0)
        GTEST_SKIP() << "only root can give a file to a group that it is not in";
    const anvil_test::ordinary_user user;
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    const auto failure = file.commit();
    EXPECT_EQ(failure, std::errc::operation_not_permitted);
    EXPECT_EQ(failure.message(),
              "the group of the old file cannot be kept: Operation not permitted");
    EXPECT_EQ(content_of(folder / "walk.c3d"), "kept");
}

TEST(IoFilePosix, WriteProtectedFileIsNotOpenedForWriting) {
    const temporary_folder folder;
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    make_file(folder / "walk.c3d", "kept");
    ASSERT_EQ(::chmod((folder / "walk.c3d").c_str(), 0444), 0);
    const anvil_test::ordinary_user user;
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    EXPECT_FALSE(file.is_open());
}

TEST(IoFilePosix, LinkStaysALinkAndItsTargetIsReplaced) {
    const temporary_folder folder;
    std::filesystem::create_directory(folder / "trials");
    make_file(folder / "trials" / "walk.c3d", "old");
    std::filesystem::create_symlink("trials/walk.c3d", folder / "first.c3d");
    std::filesystem::create_symlink("first.c3d", folder / "second.c3d");
    io_file file;
    file.open(folder / "second.c3d", anvil::io_write);
    EXPECT_FALSE(file.write(std::as_bytes(std::span{"new", 3})).error);
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(content_of(folder / "trials" / "walk.c3d"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "first.c3d"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "second.c3d"));
}

TEST(IoFilePosix, LinkToAMissingFileMakesThatFile) {
    const temporary_folder folder;
    std::filesystem::create_symlink("walk.c3d", folder / "link.c3d");
    io_file file;
    file.open(folder / "link.c3d", anvil::io_write);
    EXPECT_FALSE(file.commit());
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.c3d"));
    EXPECT_EQ(content_of(folder / "walk.c3d"), "");
}

TEST(IoFilePosix, LinkToItselfIsNotOpened) {
    const temporary_folder folder;
    std::filesystem::create_symlink("link.c3d", folder / "link.c3d");
    io_file file;
    file.open(folder / "link.c3d", anvil::io_write);
    EXPECT_FALSE(file.is_open());
}

TEST(IoFilePosix, FolderThatVanishedIsAnError) {
    const temporary_folder folder;
    std::filesystem::create_directory(folder / "trials");
    io_file file;
    file.open(folder / "trials" / "walk.c3d", anvil::io_write);
    std::filesystem::remove_all(folder / "trials");
    EXPECT_EQ(file.commit(), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(file.is_open());
}

TEST(IoFilePosix, NameKeepsBytesThatAreNoText) {
    io_file file;
    file.open("missing/\xff.c3d", anvil::io_read);
    EXPECT_EQ(file.name(), "missing/\xff.c3d");
}

TEST(IoFilePosix, FileIsNotInheritedByOtherPrograms) {
    const temporary_folder folder;
    io_file file;
    file.open(folder / "walk.c3d", anvil::io_write);
    int open_files = 0;
    for (const auto& entry : std::filesystem::directory_iterator{"/proc/self/fd"}) {
        std::error_code ended;
        if (std::filesystem::read_symlink(entry, ended).parent_path() != folder.path())
            continue;
        ++open_files;
        EXPECT_TRUE(::fcntl(std::stoi(entry.path().filename()), F_GETFD) & FD_CLOEXEC);
    }
    EXPECT_EQ(open_files, 1);
}

TEST(IoFilePosix, FileNeverBecomesAClosedStandardStream) {
    const temporary_folder folder;
    const auto child = anvil_test::start_child([&folder] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::close(stream);
        io_file file;
        file.open(folder / "walk.c3d", anvil::io_write);
        const std::array content{std::byte{'c'}, std::byte{'3'}, std::byte{'d'}};
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            if (::write(stream, "noise", 5) != -1)
                throw stream;
        if (file.write(content).error || file.commit())
            throw folder.path();
    });
    EXPECT_TRUE(anvil_test::ended_well(child));
    EXPECT_EQ(content_of(folder / "walk.c3d"), "c3d");
}

} // namespace
