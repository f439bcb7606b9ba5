#include <filesystem>
#include <fstream>
#include <ostream>

#include <strata/callable_builder.hpp>
#include <strata/data_exporter.hpp>
#include <strata/data_importer.hpp>
#include <strata/data_store.hpp>

#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/strata/support/memory_device.hpp"
#include "tests/cpp/strata/support/plugin_test.hpp"

namespace {

using strata_test::memory_device;
using strata_test::plugin_path;

class PluginManager : public strata_test::plugin_test {};

bool has_unit(const std::string& id) {
    const strata::data_store store;
    auto root = store.root();
    const auto status =
        strata::callable_builder{}.evaluate(root, {{"callable_unit", id}, {"Group", "g"}});
    return status.message("") != "The callable unit '" + id + "' is not loaded";
}

/// The text of a file of bytes.
std::string content_of(const std::string& path) {
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

void write_file(const std::filesystem::path& path, const std::string& content) {
    std::ofstream{path, std::ios::binary} << content;
}

TEST_F(PluginManager, LoadsAPlugin) {
    strata::plugin_handle handle;
    EXPECT_TRUE(manager_.load(&handle, plugin_path("good")));
    EXPECT_EQ(handle.path(), plugin_path("good"));
    EXPECT_TRUE(has_unit("test.unit"));
    EXPECT_TRUE(log().empty());
}

TEST_F(PluginManager, NeedsNoHandle) { EXPECT_TRUE(manager_.load(nullptr, plugin_path("good"))); }

TEST_F(PluginManager, LoadedAgainRegistersNothingTwice) {
    EXPECT_TRUE(manager_.load(nullptr, plugin_path("good")));
    EXPECT_TRUE(manager_.load(nullptr, plugin_path("good")));
    EXPECT_TRUE(log().empty());
    manager_.clear();
    EXPECT_FALSE(has_unit("test.unit"));
}

TEST_F(PluginManager, LinkToALoadedFileCountsAsLoaded) {
    const anvil_test::temporary_folder folder;
    std::filesystem::create_symlink(plugin_path("good"), folder / "link.so");
    if (!std::filesystem::exists(folder / "link.so"))
        GTEST_SKIP() << "the system follows no links";
    EXPECT_TRUE(manager_.load(nullptr, plugin_path("good")));
    EXPECT_TRUE(manager_.load(nullptr, (folder / "link.so").string()));
    EXPECT_TRUE(log().empty());
}

TEST_F(PluginManager, OtherPathOfALoadedFileCountsAsLoaded) {
    EXPECT_TRUE(manager_.load(nullptr, plugin_path("good")));
    const std::string parent = std::filesystem::path{plugin_path("good")}.parent_path().string();
    EXPECT_TRUE(manager_.load(nullptr, parent + "/./good" + STRATA_PLUGIN_SUFFIX));
    EXPECT_TRUE(log().empty());
}

TEST_F(PluginManager, HardLinkToALoadedFileCountsAsLoaded) {
    const auto link = plugin_path("good_hard_link");
    std::filesystem::remove(link);
    std::filesystem::create_hard_link(plugin_path("good"), link);
    EXPECT_TRUE(manager_.load(nullptr, plugin_path("good")));
    EXPECT_TRUE(manager_.load(nullptr, link));
    EXPECT_TRUE(log().empty());
    manager_.clear(); // some systems keep the file while it is loaded
    std::filesystem::remove(link);
}

TEST_F(PluginManager, CopyOfALoadedFileOffersTakenIds) {
    const anvil_test::temporary_folder folder;
    const auto copy = (folder / "copy.so").string();
    std::filesystem::copy_file(plugin_path("second"), copy);
    EXPECT_TRUE(manager_.load(nullptr, plugin_path("second")));
    EXPECT_FALSE(manager_.load(nullptr, copy));
    EXPECT_EQ(log(), std::vector{refusal_line(
                         copy, "the callable unit 'test.second' is registered already")});
}

TEST_F(PluginManager, ClearedOffersNothing) {
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    manager_.clear();
    EXPECT_FALSE(has_unit("test.unit"));
}

TEST_F(PluginManager, LoadsAgainAfterClear) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
        EXPECT_TRUE(has_unit("test.unit"));
        manager_.clear();
    }
    EXPECT_TRUE(log().empty());
}

TEST_F(PluginManager, DestroyedOffersNothing) {
    {
        strata::plugin_manager other;
        ASSERT_TRUE(other.load(nullptr, plugin_path("good")));
        EXPECT_TRUE(has_unit("test.unit"));
    }
    EXPECT_FALSE(has_unit("test.unit"));
}

TEST_F(PluginManager, TwoManagersMayHoldOnePlugin) {
    strata::plugin_manager other;
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    ASSERT_TRUE(other.load(nullptr, plugin_path("good")));
    manager_.clear();
    EXPECT_TRUE(has_unit("test.unit"));
    other.clear();
    EXPECT_FALSE(has_unit("test.unit"));
}

TEST_F(PluginManager, ImporterInUseOutlivesClear) {
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    memory_device device{"AAAA"};
    strata::data_importer importer{&device, "test.aaaa"};
    manager_.clear();
    const strata::data_store store;
    EXPECT_TRUE(importer.read(store.root()));
    EXPECT_TRUE(store.root().exists_group("AAAA"));
}

TEST_F(PluginManager, PluginInUseCanBeLoadedAgain) {
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    memory_device device{"AAAA"};
    strata::data_importer first{&device, "test.aaaa"};
    manager_.clear();
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    strata::data_importer second{&device, "test.aaaa"};
    const strata::data_store store;
    EXPECT_TRUE(first.read(store.root().create_group("1")));
    EXPECT_TRUE(second.read(store.root().create_group("2")));
}

struct refused_plugin {
    const char* name;
    const char* reason;
};

void PrintTo(const refused_plugin& plugin, std::ostream* stream) { *stream << plugin.name; }

class RefusedPlugin : public strata_test::plugin_test,
                      public testing::WithParamInterface<refused_plugin> {};

TEST_P(RefusedPlugin, IsLoggedAndLeavesNothing) {
    ASSERT_TRUE(manager_.load(nullptr, plugin_path("good")));
    const auto path = plugin_path(GetParam().name);
    strata::plugin_handle handle;
    EXPECT_FALSE(manager_.load(&handle, path));
    EXPECT_EQ(handle.path(), "");
    EXPECT_EQ(log(), std::vector{refusal_line(path, GetParam().reason)});
    EXPECT_FALSE(has_unit("test.half"));
    EXPECT_TRUE(has_unit("test.unit"));
}

INSTANTIATE_TEST_SUITE_P(
    Plugins, RefusedPlugin,
    testing::Values(
        refused_plugin{"other_version",
                       "it speaks version 99 of the plugin interface, not version 2"},
        refused_plugin{"throws", "it failed to register : the licence is missing"},
        refused_plugin{"throws_number",
                       "it failed to register : it threw something that is no exception"},
        refused_plugin{"lets_out", "it failed to register : nobody catches this"},
        refused_plugin{"fails", "it failed to register"},
        refused_plugin{"duplicate", "the callable unit 'test.unit' is registered already"},
        refused_plugin{"duplicate_inside", "the callable unit 'test.half' is registered already"},
        refused_plugin{"null_offer", "the importer 'test.null' that it registers is null"},
        refused_plugin{"empty_id", "the id of the callable unit that it registers is empty"},
        refused_plugin{"no_entry", "it is no plugin: it has no entry point"},
        refused_plugin{"missing", "there is no such file"}),
    [](const auto& parameter) {
        std::string name = parameter.param.name;
        std::erase(name, '_');
        return name;
    });

TEST_F(PluginManager, RefusesADirectory) {
    const anvil_test::temporary_folder folder;
    EXPECT_FALSE(manager_.load(nullptr, folder.path().string()));
    EXPECT_EQ(log(), std::vector{refusal_line(folder.path().string(), "it is a directory")});
}

TEST_F(PluginManager, RefusesTheEmptyPath) {
    EXPECT_FALSE(manager_.load(nullptr, ""));
    EXPECT_EQ(log(), std::vector{refusal_line("", "there is no such file")});
}

TEST_F(PluginManager, RefusesATextFile) {
    const anvil_test::temporary_folder folder;
    write_file(folder / "notes.txt", std::string(500, 'x'));
    EXPECT_FALSE(manager_.load(nullptr, (folder / "notes.txt").string()));
    EXPECT_EQ(log(), std::vector{
                         refusal_line((folder / "notes.txt").string(), "it is no shared library")});
}

TEST_F(PluginManager, RefusesAnEmptyFile) {
    const anvil_test::temporary_folder folder;
    write_file(folder / "empty.so", "");
    EXPECT_FALSE(manager_.load(nullptr, (folder / "empty.so").string()));
    EXPECT_EQ(log(),
              std::vector{refusal_line((folder / "empty.so").string(), "it is no shared library")});
}

TEST_F(PluginManager, SurvivesAFileThatIsCutShort) {
    const anvil_test::temporary_folder folder;
    const auto whole = content_of(plugin_path("second"));
    int refused = 0;
    for (int i = 0; i < 40; ++i) {
        // Every length its own file: what the loader knows by one path it does not read again.
        const auto path = folder / ("cut" + std::to_string(i) + ".so");
        write_file(path, whole.substr(0, whole.size() * static_cast<std::size_t>(i) / 40));
        refused += manager_.load(nullptr, path.string()) ? 0 : 1;
        manager_.clear();
    }
    EXPECT_GE(refused, 10);
    EXPECT_EQ(log().size(), static_cast<std::size_t>(refused));
}

} // namespace
