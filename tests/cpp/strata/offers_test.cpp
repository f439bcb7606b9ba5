#include <strata/callable_builder.hpp>
#include <strata/data_exporter.hpp>
#include <strata/data_importer.hpp>
#include <strata/data_store.hpp>
#include <strata/plugin/status_of.hpp>

#include "tests/cpp/strata/support/memory_device.hpp"
#include "tests/cpp/strata/support/plugin_test.hpp"

namespace {

using strata::data_exporter;
using strata::data_importer;
using strata::data_store;
using strata_test::memory_device;
using strata_test::plugin_path;

/// Every message of a status, one after the other.
std::string text(const anvil::status& status) { return status.message("|"); }

class NoPlugins : public strata_test::plugin_test {};

TEST_F(NoPlugins, NobodyAcceptsAFile) {
    memory_device device{"AAAA"};
    EXPECT_EQ(text(data_importer(&device, "").read(data_store{}.root())),
              "No importer accepts the file 'memory.dat': no importer plugin is loaded");
}

TEST_F(NoPlugins, ImporterIsMissing) {
    memory_device device{"AAAA"};
    EXPECT_EQ(text(data_importer(&device, "org.c3d.c3d").read(data_store{}.root())),
              "The importer 'org.c3d.c3d' is not loaded");
}

TEST_F(NoPlugins, ExporterIsMissing) {
    memory_device device{""};
    EXPECT_EQ(text(data_exporter(&device, "org.c3d.c3d").write(data_store{}.root())),
              "The exporter 'org.c3d.c3d' is not loaded");
}

class Offers : public strata_test::plugin_test {
  protected:
    Offers() { EXPECT_TRUE(manager_.load(nullptr, plugin_path("good"))); }

    anvil::status evaluate(const anvil::json& parameters) {
        auto root = store_.root();
        return strata::callable_builder{}.evaluate(root, parameters);
    }

    data_store store_;
};

TEST_F(Offers, ImporterIsFoundById) {
    memory_device device{"????"};
    EXPECT_TRUE(data_importer(&device, "test.bbbb").read(store_.root()));
    EXPECT_TRUE(store_.root().exists_group("BBBB"));
}

TEST_F(Offers, ImporterIsFoundByContent) {
    memory_device device{"BBBB and more"};
    EXPECT_TRUE(data_importer(&device, "").read(store_.root()));
    EXPECT_TRUE(store_.root().exists_group("BBBB"));
}

TEST_F(Offers, ImporterThatCannotJudgeIsPassedOver) {
    memory_device device{"AAAA"};
    EXPECT_TRUE(data_importer(&device, "").read(store_.root()));
    EXPECT_EQ(log(), std::vector<std::string>{"[4] [strata] The importer 'test.confused' failed to "
                                              "judge 'memory.dat' : what is this"});
}

TEST_F(Offers, ForeignFileIsAcceptedByNobody) {
    memory_device device{"foreign"};
    EXPECT_EQ(text(data_importer(&device, "").read(store_.root())),
              "No importer accepts the file 'memory.dat'");
}

TEST_F(Offers, DeviceThatCannotBeReadIsNoForeignFile) {
    memory_device device{"BBBB"};
    device.read_failure = std::make_error_code(std::errc::io_error);
    data_importer importer(&device, "");
    EXPECT_FALSE(importer.is_accepted());
    EXPECT_EQ(text(importer.read(store_.root())),
              "'memory.dat': byte 0: reading failed: " + device.read_failure.message());
}

TEST_F(Offers, ThrowingImporterFails) {
    memory_device device{"THRO"};
    EXPECT_EQ(text(data_importer(&device, "").read(store_.root())),
              "The importer 'test.throws' failed : byte 4: nothing is right");
}

TEST_F(Offers, ImporterWithoutMemoryFails) {
    memory_device device{"MEMO"};
    EXPECT_EQ(text(data_importer(&device, "").read(store_.root())),
              "The importer 'test.memory' failed : there is not enough memory");
}

TEST_F(Offers, ImporterWithoutDeviceFails) {
    EXPECT_EQ(text(data_importer(nullptr, "").read(store_.root())),
              "There is no device to read from");
}

TEST_F(Offers, ExporterWrites) {
    memory_device device{""};
    store_.root().create_group("Format");
    EXPECT_TRUE(data_exporter(&device, "test.exporter").write(store_.root()));
    EXPECT_EQ(device.written, "Format");
    EXPECT_EQ(device.commits, 1);
}

TEST_F(Offers, WhatTheDeviceCannotCompleteIsAFailure) {
    memory_device device{""};
    device.commit_failure = std::make_error_code(std::errc::no_space_on_device);
    store_.root().create_group("Format");
    EXPECT_EQ(text(data_exporter(&device, "test.exporter").write(store_.root())),
              "The file could not be completed: " + device.commit_failure.message());
}

TEST_F(Offers, FailureOfAnExporterIsHandedOver) {
    memory_device device{""};
    EXPECT_EQ(text(data_exporter(&device, "test.exporter").write(store_.root())),
              "there is nothing to write");
    EXPECT_EQ(device.commits, 0);
}

TEST_F(Offers, ExporterWithoutDeviceFails) {
    EXPECT_EQ(text(data_exporter(nullptr, "test.exporter").write(store_.root())),
              "There is no device to write to");
}

TEST_F(Offers, UnitIsFoundByItsId) {
    EXPECT_TRUE(evaluate({{"callable_unit", "test.unit"}, {"Group", "made"}}));
    EXPECT_TRUE(store_.root().exists_group("made"));
}

TEST_F(Offers, ThrowingUnitFails) {
    ASSERT_TRUE(evaluate({{"callable_unit", "test.unit"}, {"Group", "made"}}));
    EXPECT_EQ(text(evaluate({{"callable_unit", "test.unit"}, {"Group", "made"}})),
              "The callable unit 'test.unit' failed : The group 'made' already exists");
}

TEST_F(Offers, UnitThatIsNotLoadedIsNamed) {
    EXPECT_EQ(text(evaluate({{"callable_unit", "test.other"}})),
              "The callable unit 'test.other' is not loaded");
}

TEST_F(Offers, ParametersWithoutAUnitFail) {
    const std::string missing =
        "The parameters name no callable unit: the text 'callable_unit' is missing";
    EXPECT_EQ(text(evaluate(anvil::json::object())), missing);
    EXPECT_EQ(text(evaluate({{"callable_unit", 5}})), missing);
    EXPECT_EQ(text(evaluate(anvil::json::array())), missing);
    EXPECT_EQ(text(evaluate(nullptr)), missing);
}

TEST(StatusOf, WorkThatEndsIsASuccess) {
    EXPECT_TRUE(strata::status_of([] {}));
}

TEST(StatusOf, WhatIsThrownIsAFailureBehindTheIntroduction) {
    const auto status =
        strata::status_of([] { throw std::runtime_error("no rows"); }, "A table cannot be read : ");
    EXPECT_EQ(text(status), "A table cannot be read : no rows");
    EXPECT_FALSE(status.is_out_of_memory());
}

TEST(StatusOf, WantOfMemoryIsTold) {
    const auto status = strata::status_of([] { throw std::bad_alloc(); });
    EXPECT_EQ(text(status), "there is not enough memory");
    EXPECT_TRUE(status.is_out_of_memory());
}

} // namespace
