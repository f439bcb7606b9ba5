#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "schema/write_attribute.hpp"
#include "tests/cpp/c3d/support/trial.hpp"
#include "tests/cpp/c3d/support/writing.hpp"

namespace {

using c3d_test::new_acquisition;
using c3d_test::opened;
using c3d_test::parameter_writer;
using c3d_test::reading;
using c3d_test::trial;
using c3d_test::write;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto event_parameters = "Format/Metadata/EVENT";

trial with_events() {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(7, "EVENT");
        writer.words(7, "USED", {3});
        writer.texts(7, "CONTEXTS", {"Left", "Right", "Left"}, 16);
        writer.texts(7, "LABELS", {"Foot Strike", "Foot Off", "Foot Strike"}, 32);
        writer.reals(7, "TIMES", {0, 1.5F, 1, 2.5F, 0, 3.5F}, {2, 3});
    };
    return file;
}

strata::data_group events_of(const reading& found) {
    return found.store.root().retrieve_group("Format/Events");
}

TEST(WriteEvents, StayAsTheFileHasThem) {
    const auto again = opened(write(opened(with_events().bytes()).store).bytes);
    EXPECT_THAT(again.numbers(event_parameters, "TIMES"), ElementsAre(0, 1.5, 1, 2.5, 0, 3.5));
    EXPECT_THAT(again.store.root().retrieve_group(event_parameters).list_attributes_name(),
                ElementsAre("USED", "CONTEXTS", "LABELS", "TIMES"));
}

TEST(WriteEvents, AppendedOnesComeBehindInTheFilesOrder) {
    const auto found = opened(with_events().bytes());
    auto strikes = events_of(found).retrieve_set("LeftFoot Strike");
    const std::uint64_t extent = 3;
    strikes.resize(&extent, 1);
    const std::vector<float> times = {1.5F, 3.5F, 125.25F};
    ASSERT_TRUE(strikes.select(strikes.shape(false), false)
                    .write_value(times.data(), strata::data_type::float32));
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.numbers(event_parameters, "USED"), ElementsAre(4));
    EXPECT_THAT(again.numbers(event_parameters, "TIMES"),
                ElementsAre(0, 1.5, 1, 2.5, 0, 3.5, 2, 5.25));
    EXPECT_THAT(again.texts(event_parameters, "CONTEXTS"),
                ElementsAre("Left", "Right", "Left", "Left"));
    EXPECT_THAT(again.numbers("Format/Events/LeftFoot Strike", "Icons"), ElementsAre(0));
}

TEST(WriteEvents, LabelsTooLongForTheHeaderGoToTheGroup) {
    trial file;
    file.header_words = {{151, 1}, {153, 0}, {154, 0x3F80}, {199, 0x4852}, {200, 0x2053}};
    const auto found = opened(file.bytes());
    auto label =
        found.store.root().retrieve_group("Format/Header").retrieve_attribute("EventLabels");
    label.write("Stride");
    auto events = events_of(found);
    events.delete_set("RHS");
    const strata::data_shape shape({1}, false);
    auto set = events.create_set("Stride", shape, strata::data_type::float32);
    const float time = 1.0F;
    ASSERT_TRUE(set.select(shape, false).write_value(&time, strata::data_type::float32));
    schema::write_text(set, "OccurrenceLabels", "Stride");
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.texts("Format/Header", "EventLabels"), IsEmpty());
    EXPECT_THAT(again.texts(event_parameters, "LABELS"), ElementsAre("Stride"));
    EXPECT_THAT(again.numbers(event_parameters, "TIMES"), ElementsAre(0, 1));
}

TEST(WriteEvents, NewAcquisitionsGetTheWholeGroup) {
    new_acquisition made(1, 50.0);
    made.add_event("Left", "Foot Strike", {0.1F, -70.5F});
    const auto found = opened(write(made.store).bytes);
    EXPECT_THAT(found.store.root().retrieve_group(event_parameters).list_attributes_name(),
                ElementsAre("USED", "CONTEXTS", "LABELS", "DESCRIPTIONS", "TIMES", "SUBJECTS",
                            "ICON_IDS", "GENERIC_FLAGS"));
    const auto set = found.store.root().retrieve_set("Format/Events/LeftFoot Strike");
    std::vector<float> times(2);
    ASSERT_TRUE(
        set.select(set.shape(false), false).read_value(times.data(), strata::data_type::float32));
    EXPECT_THAT(times, ElementsAre(0.1F, -70.5F));
}

TEST(WriteEvents, ThatAreGoneLeaveEmptyLists) {
    const auto found = opened(with_events().bytes());
    for (const auto* name : {"LeftFoot Strike", "RightFoot Off"})
        events_of(found).delete_set(name);
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.numbers(event_parameters, "USED"), ElementsAre(0));
    EXPECT_THAT(events_of(again).list_set_children_name(), IsEmpty());
}

TEST(WriteEvents, ThatNobodyLookedForStay) {
    auto file = with_events();
    file.header_words = {{151, 1}, {153, 0},      {154, 0x3F80},
                         {189, 1}, {199, 0x4852}, {200, 0x2053}}; // "RHS " at 1 s
    const auto found = opened(file.bytes());
    found.store.root().delete_group("Format/Events");
    const auto written = write(found.store);
    EXPECT_EQ(written.part(396, 4), c3d_test::characters("RHS "));
    const auto again = opened(written.bytes);
    EXPECT_THAT(again.numbers(event_parameters, "USED"), ElementsAre(3));
    EXPECT_THAT(again.numbers(event_parameters, "TIMES"), ElementsAre(0, 1.5, 1, 2.5, 0, 3.5));
}

TEST(WriteEvents, HeaderKeepsThoseThatRemain) {
    trial file;
    file.header_words = {{151, 1}, {153, 0},      {154, 0x3F80},
                         {189, 1}, {199, 0x4852}, {200, 0x2053}}; // "RHS " at 1 s
    const auto found = opened(file.bytes());
    EXPECT_THAT(events_of(found).list_set_children_name(), ElementsAre("RHS"));
    const auto kept = write(found.store);
    EXPECT_EQ(kept.part(300, 8), c3d_test::hex("01 00 00 00 00 00 80 3F"));
    EXPECT_EQ(kept.part(376, 1), c3d_test::hex("01"));
    EXPECT_EQ(kept.part(396, 4), c3d_test::characters("RHS "));

    events_of(found).delete_set("RHS");
    const auto gone = write(found.store);
    EXPECT_EQ(gone.part(300, 8), c3d_test::hex("00 00 00 00 00 00 00 00"));
    EXPECT_THAT(events_of(opened(gone.bytes)).list_set_children_name(), IsEmpty());
}

TEST(WriteEvents, IdsBeyondAWordAreRefused) {
    new_acquisition made(1, 50.0);
    auto set = made.add_event("Left", "Heel", {0.1F});
    schema::write_number(set, "Icons", std::int32_t{40000});
    EXPECT_EQ(write(made.store).status.message(""),
              "EVENT:ICON_IDS of the event 'Heel' is 40000; a C3D file holds -32768 to 32767");
}

} // namespace
