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
        if (std::filesystem::read_symlink(entry, ended) != folder / "walk.c3d")
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
        if (file.write(content).error)
            throw folder.path();
    });
    EXPECT_TRUE(anvil_test::ended_well(child));
    EXPECT_EQ(content_of(folder / "walk.c3d"), "c3d");
}

} // namespace
