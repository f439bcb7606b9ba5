#include "schema/event_sets.hpp"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <strata/data_store.hpp>

#include "schema/names.hpp"
#include "schema/write_attribute.hpp"

namespace {

using schema::event_occurrence;
using schema::event_set_name;

class EventSets : public testing::Test {
  protected:
    strata::data_set make(const char* name, const std::array<float, 2>& times) {
        const strata::data_shape shape({2}, false);
        auto set = store_.root().create_set(name, shape, strata::data_type::float32);
        EXPECT_TRUE(set.select(shape, false).write_value(times.data(), strata::data_type::float32));
        return set;
    }

    strata::data_store store_;
};

TEST_F(EventSets, WhatOccurrencesDoNotSayIsTakenFromTheSet) {
    auto set = make("LeftHeel", {1.5F, 0.5F});
    schema::write_text(set, schema::attribute::event_context, "Left");
    schema::write_text(set, schema::attribute::event_subject, "Ann");
    schema::write_texts(set, schema::attribute::occurrence_subjects,
                        std::vector<std::string>{"Bob"});
    schema::write_numbers(set, schema::attribute::event_icons, std::vector<std::int32_t>{3});
    const std::vector<event_occurrence> expected{{"Left", "Heel", "Bob", "", 1.5F, 3, 0},
                                                 {"Left", "Heel", "Ann", "", 0.5F, 3, 0}};
    EXPECT_EQ(schema::read_occurrences(set), expected);
}

TEST_F(EventSets, WhatWasWrittenIsRead) {
    auto set = make("Any name", {1.5F, 0.5F});
    const std::vector<event_occurrence> former{{"a", "b", "c", "d", 1.5F, 1, 2},
                                               {"e", "f", "g", "h", 0.5F, 3, 4}};
    const std::vector<event_occurrence> later{{"Left", "Heel", "Bob", "", 1.5F, 3, 7},
                                              {"Left", "He_el", "", "x", 0.5F, -1, 8}};
    for (const auto& occurrences : {former, later}) {
        schema::write_event(set, occurrences.front(), "Heel");
        schema::write_occurrences(set, occurrences);
        EXPECT_EQ(schema::read_occurrences(set), occurrences);
    }
}

TEST_F(EventSets, TextsAreNoTimes) {
    const auto set =
        store_.root().create_set("Heel", strata::data_shape({2}, false), strata::data_type::string);
    EXPECT_FALSE(schema::read_occurrences(set).has_value());
}

TEST_F(EventSets, NamesAreContextAndLabelWithoutSeparators) {
    EXPECT_EQ(event_set_name("Left", "Foot Strike"), "LeftFoot Strike");
    EXPECT_EQ(event_set_name("Le_ft", "_Foot__Strike_"), "LeftFootStrike");
    EXPECT_EQ(event_set_name("a/b", "c\\d"), "abcd");
    EXPECT_EQ(event_set_name("_", "/"), "Event");
    EXPECT_EQ(event_set_name("Left", "Foot_Strike", ""), "LeftFoot_Strike");
    EXPECT_EQ(event_set_name("Left--", "Foot-Off", "--"), "LeftFoot-Off");
    EXPECT_EQ(schema::numbered_event_set("Heel", 1), "Heel");
    EXPECT_EQ(schema::numbered_event_set("Heel", 3), "Heel 3");
}

} // namespace
