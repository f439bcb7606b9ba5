#include <strata/data_importer.hpp>

#include "tests/cpp/strata/support/memory_device.hpp"
#include "tests/cpp/strata/support/plugin_test.hpp"
#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata_test::memory_device;
using strata_test::values;

class ExamplePlugin : public strata_test::plugin_test {
  protected:
    ExamplePlugin() { EXPECT_TRUE(manager_.load(nullptr, STRATA_EXAMPLE_PLUGIN)); }

    std::string read(const std::string& content) {
        memory_device device{content};
        return strata::data_importer{&device, ""}.read(store_.root()).message("|");
    }

    strata::data_store store_;
};

TEST_F(ExamplePlugin, ReadsATable) {
    EXPECT_EQ(read("#table 1000\nleft,right\n0.25,-1.5\r\n0.5,2\n1e3,0"), "");
    const auto set = store_.root().retrieve_set("Format/Data/Analogs");
    EXPECT_EQ(set.shape(false), strata_test::shape({1, 2, 3}));
    EXPECT_EQ(values<double>(strata_test::whole(set)),
              (std::vector<double>{0.25, 0.5, 1000, -1.5, 2, 0}));
    EXPECT_EQ(strata_test::texts(set.retrieve_attribute("Labels")),
              (std::vector<std::string>{"left", "right"}));
    EXPECT_EQ(values<double>(set.retrieve_attribute("SampleRate")), std::vector<double>{1000});
    EXPECT_EQ(values<std::int64_t>(set.retrieve_attribute("NumSamples")),
              std::vector<std::int64_t>{3});
    EXPECT_EQ(values<double>(set.retrieve_attribute("StartTime")), std::vector<double>{0});
}

TEST_F(ExamplePlugin, ReadsATableWithoutRows) {
    EXPECT_EQ(read("#table 50\na\n"), "");
    EXPECT_EQ(store_.root().retrieve_set("Format/Data/Analogs").shape(false),
              strata_test::shape({1, 1, 0}));
}

TEST_F(ExamplePlugin, LeavesOtherFilesAlone) {
    EXPECT_EQ(read("table 1000\n"), "No importer accepts the file 'memory.dat'");
    EXPECT_EQ(read("#ta"), "No importer accepts the file 'memory.dat'");
}

TEST_F(ExamplePlugin, NamesThePlaceOfAMistake) {
    EXPECT_EQ(read("#table fast\na\n"), "'memory.dat', line 1: 'fast' is no number");
    EXPECT_EQ(read("#table -5\na\n"), "'memory.dat', line 1: the sample rate is not above 0");
    EXPECT_EQ(read("#table nan\na\n"), "'memory.dat', line 1: the sample rate is not above 0");
    EXPECT_EQ(read("#table 5"), "'memory.dat', line 2: the labels are missing");
    EXPECT_EQ(read("#table 5\na,b\n1,2\n3\n"),
              "'memory.dat', line 4: 2 values were expected, 1 found");
    EXPECT_EQ(read("#table 5\na,b\n1,x\n"), "'memory.dat', line 3: 'x' is no number");
    EXPECT_TRUE(store_.root().list_group_children_name().empty());
}

} // namespace
