#include <filesystem>
#include <fstream>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <strata/data_importer.hpp>

#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/strata/support/memory_device.hpp"
#include "tests/cpp/strata/support/plugin_test.hpp"

namespace {

using strata_test::plugin_path;

class PluginFile : public strata_test::plugin_test {
  protected:
    /// Whether the file is part of the process.
    [[nodiscard]] static bool is_mapped(const std::string& path) {
        void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
        if (library)
            ::dlclose(library);
        return library != nullptr;
    }
};

TEST_F(PluginFile, LeavesTheProcessWhenCleared) {
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    EXPECT_TRUE(is_mapped(plugin_path("good")));
    manager_.clear();
    EXPECT_FALSE(is_mapped(plugin_path("good")));
}

TEST_F(PluginFile, LeavesTheProcessOnceNothingOfItIsInUse) {
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    {
        strata_test::memory_device device{"AAAA"};
        const strata::data_importer importer{&device, ""};
        manager_.clear();
        EXPECT_TRUE(is_mapped(plugin_path("good")));
    }
    EXPECT_FALSE(is_mapped(plugin_path("good")));
}

TEST_F(PluginFile, LeavesTheProcessWhenItIsRefused) {
    for (const auto* name : {"throws", "other_version", "lets_out", "no_entry"}) {
        EXPECT_FALSE(manager_.load(nullptr, plugin_path(name)));
        EXPECT_FALSE(is_mapped(plugin_path(name))) << name;
    }
}

TEST_F(PluginFile, ThatIsAPipeIsNotOpened) {
    const anvil_test::temporary_folder folder;
    const auto pipe = (folder / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(manager_.load(nullptr, pipe));
    EXPECT_EQ(log(), std::vector{refusal_line(pipe, "it is no regular file")});
}

TEST_F(PluginFile, ThatCannotBeReadIsRefused) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "this user may read every file";
    const anvil_test::temporary_folder folder;
    const auto path = folder / "secret.so";
    std::filesystem::copy_file(plugin_path("second"), path);
    std::filesystem::permissions(path, std::filesystem::perms::none);
    EXPECT_FALSE(manager_.load(nullptr, path.string()));
    EXPECT_EQ(log(), std::vector{refusal_line(path.string(), "it cannot be read")});
}

TEST_F(PluginFile, ThatEndsBeforeItsSegmentsIsRefused) {
    const anvil_test::temporary_folder folder;
    const auto path = folder / "cut.so";
    std::filesystem::copy_file(plugin_path("second"), path);
    std::filesystem::resize_file(path, 5000);
    EXPECT_FALSE(manager_.load(nullptr, path.string()));
    EXPECT_EQ(
        log(),
        std::vector{refusal_line(
            path.string(),
            "it is cut short: its headers speak of more than the 5000 bytes that are there")});
}

} // namespace
