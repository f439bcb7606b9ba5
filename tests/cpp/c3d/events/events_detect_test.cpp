#include "plugins/c3d/events/events_detect.hpp"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d_test::parameter_writer;
using c3d_test::reading;
using c3d_test::trial;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int event = 9;

const anvil::json usual_parameters = {{"callable_unit", "org.c3d.events-detect"},
                                      {"SourceGroup", ""},
                                      {"DestinationGroup", "Format/Events"},
                                      {"PartSeparator", "_"}};

reading detect(const c3d_test::byte_vector& bytes) {
    auto found = c3d_test::read(bytes);
    EXPECT_TRUE(found.status) << found.status.message(" ");
    auto root = found.store.root();
    found.status = c3d::events_detect().evaluate(root, usual_parameters);
    EXPECT_TRUE(found.status) << found.status.message(" ");
    return found;
}

reading detect(std::function<void(parameter_writer&)> parameters) {
    trial file;
    file.more_parameters = [&](parameter_writer& writer) {
        writer.group(event, "EVENT");
        parameters(writer);
    };
    return detect(file.bytes());
}

void write_three_events(parameter_writer& writer) {
    writer.words(event, "USED", {3}).texts(event, "CONTEXTS", {"Left", "Right", "Left"}, 16);
    writer.texts(event, "LABELS", {"Foot Strike", "Foot Off", "Foot Strike"}, 32);
    writer.texts(event, "DESCRIPTIONS", {"first", "second", "third"}, 16);
    writer.texts(event, "SUBJECTS", {"Ann", "Ann", "Bob"}, 16);
    writer.reals(event, "TIMES", {0, 2.5F, 0, 1.25F, 1, 0.5F}, {2, 3});
    writer.words(event, "ICON_IDS", {1, 2, 1}, {3}).bytes(event, "GENERIC_FLAGS", {0, 1, 2}, {3});
}

std::vector<std::string> names(const reading& found) {
    return found.store.root().retrieve_group("Format/Events").list_set_children_name();
}

TEST(EventsDetect, EventsOfOneNameShareASet) {
    const auto found = detect(write_three_events);
    EXPECT_THAT(names(found), ElementsAre("LeftFoot Strike", "RightFoot Off"));
    EXPECT_THAT(found.values("Format/Events/LeftFoot Strike"), ElementsAre(2.5, 60.5));
    EXPECT_THAT(found.shape("Format/Events/LeftFoot Strike"), ElementsAre(2));
    EXPECT_EQ(found.store.root().retrieve_set("Format/Events/LeftFoot Strike").type(),
              strata::data_type::float32);
}

TEST(EventsDetect, SetsAreDescribedByTheirFirstEvent) {
    const auto found = detect(write_three_events);
    constexpr auto set = "Format/Events/LeftFoot Strike";
    EXPECT_THAT(found.texts(set, "Context"), ElementsAre("Left"));
    EXPECT_THAT(found.numbers(set, "Icons"), ElementsAre(1));
    EXPECT_THAT(found.attribute(set, "Icons").shape().dimensions(), ElementsAre(1));
    EXPECT_EQ(found.attribute(set, "Icons").type(), strata::data_type::int32);
    EXPECT_THAT(found.texts(set, "Subject"), ElementsAre("Ann"));
    EXPECT_THAT(found.texts(set, "Description"), ElementsAre("first"));
    EXPECT_THAT(found.texts(set, "Type"), ElementsAre("Foot Strike"));
}

TEST(EventsDetect, EveryOccurrenceKeepsWhatIsItsOwn) {
    const auto found = detect(write_three_events);
    constexpr auto set = "Format/Events/LeftFoot Strike";
    EXPECT_THAT(found.texts(set, "OccurrenceContexts"), ElementsAre("Left", "Left"));
    EXPECT_THAT(found.texts(set, "OccurrenceLabels"), ElementsAre("Foot Strike", "Foot Strike"));
    EXPECT_THAT(found.texts(set, "OccurrenceSubjects"), ElementsAre("Ann", "Bob"));
    EXPECT_THAT(found.texts(set, "OccurrenceDescriptions"), ElementsAre("first", "third"));
    EXPECT_THAT(found.numbers(set, "OccurrenceIcons"), ElementsAre(1, 1));
    EXPECT_THAT(found.numbers(set, "OccurrenceFlags"), ElementsAre(0, 2));
}

TEST(EventsDetect, DestinationIsMadeWithoutEvents) {
    const auto found = detect(trial().bytes());
    EXPECT_TRUE(found.store.root().exists_group("Format/Events"));
    EXPECT_THAT(names(found), IsEmpty());
}

TEST(EventsDetect, SeparatorsAreDroppedFromNames) {
    const auto found = detect([](auto& writer) {
        writer.texts(event, "CONTEXTS", {"Ri_ght", "A/B"}, 8);
        writer.texts(event, "LABELS", {"Foot_Strike", "C\\D"}, 16);
        writer.reals(event, "TIMES", {0, 1, 0, 2}, {2, 2});
    });
    EXPECT_THAT(names(found), ElementsAre("RightFootStrike", "ABCD"));
    EXPECT_THAT(found.texts("Format/Events/RightFootStrike", "OccurrenceLabels"),
                ElementsAre("Foot_Strike"));
    EXPECT_THAT(found.texts("Format/Events/RightFootStrike", "Type"), ElementsAre("Foot Strike"));
}

TEST(EventsDetect, EventWithoutANameIsAnEvent) {
    const auto found =
        detect([](auto& writer) { writer.reals(event, "TIMES", {0, 1, 0, 2}, {2, 2}); });
    EXPECT_THAT(names(found), ElementsAre("Event"));
    EXPECT_THAT(found.values("Format/Events/Event"), ElementsAre(1, 2));
}

TEST(EventsDetect, ContextsThatDifferAreNotMixed) {
    const auto found = detect([](auto& writer) {
        writer.texts(event, "CONTEXTS", {"Left", "LeftFoot", "Left"}, 8);
        writer.texts(event, "LABELS", {"FootOff", "Off", "FootOff"}, 8);
        writer.reals(event, "TIMES", {0, 1, 0, 2, 0, 3}, {2, 3});
    });
    EXPECT_THAT(names(found), ElementsAre("LeftFootOff", "LeftFootOff 2"));
    EXPECT_THAT(found.values("Format/Events/LeftFootOff"), ElementsAre(1, 3));
    EXPECT_THAT(found.texts("Format/Events/LeftFootOff 2", "Context"), ElementsAre("LeftFoot"));
}

TEST(EventsDetect, TypeFollowsTheIconBeforeTheLabel) {
    const auto found = detect([](auto& writer) {
        writer.texts(event, "LABELS", {"FO", "FS", "Heel", "FO"}, 8);
        writer.texts(event, "CONTEXTS", {"A", "B", "C", "D"}, 8);
        writer.words(event, "ICON_IDS", {0, 7, 7}, {3});
        writer.reals(event, "TIMES", {0, 1, 0, 2, 0, 3, 0, 4}, {2, 4});
    });
    EXPECT_THAT(found.texts("Format/Events/AFO", "Type"), ElementsAre("General"));
    EXPECT_THAT(found.texts("Format/Events/BFS", "Type"), ElementsAre("Foot Strike"));
    EXPECT_THAT(found.texts("Format/Events/CHeel", "Type"), ElementsAre("Heel"));
    EXPECT_THAT(found.texts("Format/Events/DFO", "Type"), ElementsAre("Foot Off"));
    EXPECT_THAT(found.numbers("Format/Events/DFO", "Icons"), ElementsAre(0));
}

TEST(EventsDetect, UsedBoundsTheLists) {
    const auto found = detect([](auto& writer) {
        write_three_events(writer);
        writer.words(event, "USED", {1});
    });
    EXPECT_THAT(names(found), ElementsAre("LeftFoot Strike"));
    EXPECT_THAT(found.values("Format/Events/LeftFoot Strike"), ElementsAre(2.5));
}

TEST(EventsDetect, ListsBoundUsed) {
    const auto found = detect([](auto& writer) {
        write_three_events(writer);
        writer.words(event, "USED", {40000}).texts(event, "SUBJECTS", {"Ann"}, 8);
    });
    EXPECT_THAT(found.values("Format/Events/LeftFoot Strike"), ElementsAre(2.5, 60.5));
    EXPECT_THAT(found.texts("Format/Events/LeftFoot Strike", "OccurrenceSubjects"),
                ElementsAre("Ann", ""));
}

TEST(EventsDetect, ListsGoOnBehind255Events) {
    const auto found = detect([](auto& writer) {
        writer.words(event, "USED", {257});
        writer.texts(event, "LABELS", std::vector<std::string>(255, "A"), 2);
        writer.texts(event, "LABELS2", {"B", "C"}, 2);
        writer.reals(event, "TIMES", std::vector<float>(510, 1.0F), {2, 255});
        writer.reals(event, "TIMES2", {0, 7, 0, 8}, {2, 2});
    });
    EXPECT_THAT(names(found), ElementsAre("A", "B", "C"));
    EXPECT_EQ(found.values("Format/Events/A").size(), 255U);
    EXPECT_THAT(found.values("Format/Events/C"), ElementsAre(8));
}

TEST(EventsDetect, OtherSpellingOfIconsIsUnderstood) {
    const auto found = detect([](auto& writer) {
        writer.texts(event, "LABELS", {"X"}, 2).words(event, "ICONS_IDS", {2}, {1});
        writer.reals(event, "TIMES", {0, 1}, {2, 1});
    });
    EXPECT_THAT(found.texts("Format/Events/X", "Type"), ElementsAre("Foot Off"));
}

/// A trial with one event in its header, "RHS" at 0.5 s.
c3d_test::byte_vector with_header_event(const trial& file) {
    auto bytes = file.bytes();
    bytes[300] = std::byte{1};
    const auto time = c3d_test::real(c3d::number_format::intel, 0.5F);
    std::copy(time.begin(), time.end(), bytes.begin() + 304);
    const auto label = c3d_test::characters("RHS ");
    std::copy(label.begin(), label.end(), bytes.begin() + 396);
    return bytes;
}

TEST(EventsDetect, EventsOfTheHeaderAreAdded) {
    const auto found = detect(with_header_event(trial()));
    EXPECT_THAT(names(found), ElementsAre("RHS"));
    EXPECT_THAT(found.values("Format/Events/RHS"), ElementsAre(0.5));
    EXPECT_THAT(found.texts("Format/Events/RHS", "Context"), ElementsAre(""));
}

TEST(EventsDetect, EventsThatTheGroupHasAreNotAddedAgain) {
    for (float time : {0.5F, 0.7F}) {
        trial file;
        file.more_parameters = [time](parameter_writer& writer) {
            writer.group(event, "EVENT").texts(event, "LABELS", {"RHS"}, 8);
            writer.reals(event, "TIMES", {0, time}, {2, 1});
        };
        const auto found = detect(with_header_event(file));
        EXPECT_EQ(found.values("Format/Events/RHS").size(), time == 0.5F ? 1U : 2U);
    }
}

TEST(EventsDetect, SecondEvaluationReplacesTheSets) {
    auto found = detect(write_three_events);
    auto root = found.store.root();
    EXPECT_TRUE(c3d::events_detect().evaluate(root, usual_parameters));
    EXPECT_THAT(found.values("Format/Events/LeftFoot Strike"), ElementsAre(2.5, 60.5));
}

TEST(EventsDetect, MissingParameterIsNamed) {
    strata::data_store store;
    auto root = store.root();
    const auto status = c3d::events_detect().evaluate(root, {{"SourceGroup", ""}});
    EXPECT_EQ(
        status.message(""),
        "org.c3d.events-detect: a text \"DestinationGroup\" is expected among the parameters");
}

} // namespace
