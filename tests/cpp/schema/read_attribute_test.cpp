#include "schema/read_attribute.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <strata/data_store.hpp>

#include "schema/write_attribute.hpp"
#include "tests/cpp/anvil/support/collecting_sink.hpp"

namespace {

using schema::holds_numbers;
using schema::read_number;
using schema::read_numbers;
using schema::read_texts;
using testing::ElementsAre;
using testing::IsEmpty;

class ReadAttribute : public testing::Test {
  protected:
    void SetUp() override {
        anvil::install_default_log_sink(sink_);
        schema::write_numbers(group_, "Numbers", std::vector<std::int16_t>{7, 8});
        schema::write_numbers(group_, "NoNumbers", std::vector<float>{});
        schema::write_texts(group_, "Texts", std::vector<std::string>{"a", "b"});
        schema::write_texts(group_, "NoTexts", std::vector<std::string>{});
    }
    void TearDown() override { anvil::install_default_log_sink(nullptr); }

    [[nodiscard]] strata::data_attribute attribute(const char* name) const {
        return group_.retrieve_attribute(name);
    }

    strata::data_store store_;
    strata::data_group group_ = store_.root();
    std::shared_ptr<anvil_test::collecting_sink> sink_ =
        std::make_shared<anvil_test::collecting_sink>();
};

TEST_F(ReadAttribute, ReadsWhatIsThereWithoutAWord) {
    EXPECT_THAT(read_numbers<double>(attribute("Numbers")), ElementsAre(7.0, 8.0));
    EXPECT_EQ(read_number<std::int32_t>(attribute("Numbers")), 7);
    EXPECT_THAT(read_texts(attribute("Texts")), ElementsAre("a", "b"));
    EXPECT_THAT(sink_->lines, IsEmpty());
}

TEST_F(ReadAttribute, MissesWithoutAWordWhatIsNotThere) {
    for (const auto* name : {"Absent", "NoNumbers", "NoTexts"}) {
        EXPECT_THAT(read_numbers<float>(attribute(name)), IsEmpty());
        EXPECT_FALSE(read_number<float>(attribute(name)));
        EXPECT_THAT(read_texts(attribute(name)), IsEmpty());
    }
    EXPECT_THAT(sink_->lines, IsEmpty());
}

TEST_F(ReadAttribute, LogsEachAttributeOfAnotherKind) {
    const std::string line = "[4] [strata] Invalid value to read the content of an attribute";
    EXPECT_THAT(read_numbers<double>(attribute("Texts")), IsEmpty());
    EXPECT_THAT(sink_->lines, ElementsAre(line));
    EXPECT_FALSE(read_number<double>(attribute("Texts")));
    EXPECT_THAT(sink_->lines, ElementsAre(line, line));
    EXPECT_THAT(read_texts(attribute("Numbers")), IsEmpty());
    EXPECT_THAT(sink_->lines, ElementsAre(line, line, line));
}

TEST_F(ReadAttribute, AsksForTheKindWithoutAWord) {
    EXPECT_TRUE(holds_numbers(attribute("Numbers")));
    EXPECT_TRUE(holds_numbers(attribute("NoNumbers")));
    EXPECT_FALSE(holds_numbers(attribute("Texts")));
    EXPECT_FALSE(holds_numbers(attribute("Absent")));
    EXPECT_THAT(sink_->lines, IsEmpty());
}

} // namespace
