#include <ostream>

#include "tests/cpp/data_modifier/support/split_test.hpp"

namespace {

using data_modifier_test::names;
using strata::data_type;
using strata_test::shape;

class SplitFailure : public data_modifier_test::split_test {
  protected:
    /// The failure's text, after a look at what it left behind.
    std::string fail(const anvil::json& changes = anvil::json::object()) {
        const auto message = split(changes);
        EXPECT_FALSE(root_.exists_group("Format/Data/Parts"));
        return message;
    }
};

TEST_F(SplitFailure, NamesAMissingSource) {
    EXPECT_EQ(fail(), "A set cannot be split : The source set 'Format/Data/Source' does not exist");
}

TEST_F(SplitFailure, NamesASourceWithoutLabels) {
    make_source(1, 1, {"a"}).delete_attribute("Labels");
    EXPECT_EQ(fail(), "A set cannot be split : The source set 'Format/Data/Source' has no texts "
                      "'Labels', one for each channel");
}

TEST_F(SplitFailure, NamesASourceOfAnotherShape) {
    root_.create_set("Format/Data/Source", shape({2, 2}), data_type::float64);
    EXPECT_EQ(fail(), "A set cannot be split : The source set 'Format/Data/Source' does not hold "
                      "numbers by component, "
                      "channel and sample");
}

TEST_F(SplitFailure, NamesASourceOfTexts) {
    root_.create_set("Format/Data/Source", shape({1, 1, 1}), data_type::string);
    EXPECT_EQ(fail(), "A set cannot be split : The source set 'Format/Data/Source' does not hold "
                      "numbers by component, "
                      "channel and sample");
}

TEST_F(SplitFailure, NamesADestinationThatIsASet) {
    make_source(1, 1, {"a"});
    EXPECT_EQ(split({{"DestinationGroup", "Format/Data/Source"}}),
              "A set cannot be split : The data set 'Source' already exists");
    EXPECT_EQ(split({{"DestinationGroup", "Format//Parts"}}),
              "A set cannot be split : 'Format//Parts' is no name: a component is empty or where "
              "none is allowed");
}

struct bad_parameters {
    const char* title;
    const char* changes;
    const char* message;
};

void PrintTo(const bad_parameters& parameters, std::ostream* stream) {
    *stream << parameters.title;
}

class BadSplitParameters : public SplitFailure,
                           public testing::WithParamInterface<bad_parameters> {};

TEST_P(BadSplitParameters, AreNamed) {
    make_source(1, 1, {"a"});
    EXPECT_EQ(fail(anvil::json::parse(GetParam().changes)),
              std::string{"A set cannot be split : The parameter "} + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Parameters, BadSplitParameters,
    testing::Values(
        bad_parameters{"MissingSource", R"({"SourceSet": null})", "'SourceSet' is missing"},
        bad_parameters{"NumberAsSource", R"({"SourceSet": 5})", "'SourceSet' is not a path"},
        bad_parameters{"EmptySource", R"({"SourceSet": ""})", "'SourceSet' is not a path"},
        bad_parameters{"MissingDestination", R"({"DestinationGroup": null})",
                       "'DestinationGroup' is missing"},
        bad_parameters{"ListAsDestination", R"({"DestinationGroup": ["a"]})",
                       "'DestinationGroup' is not a path"},
        bad_parameters{"EmptyDestination", R"({"DestinationGroup": ""})",
                       "'DestinationGroup' is not a path"},
        bad_parameters{"TextAsFilter", R"({"LabelsFilter": "a"})",
                       "'LabelsFilter' is not an array of texts"},
        bad_parameters{"NumberInFilter", R"({"LabelsFilter": ["a", 5]})",
                       "'LabelsFilter' is not an array of texts"},
        bad_parameters{"ListAsSplit", R"({"SourceAttributesSplit": ["a"]})",
                       "'SourceAttributesSplit' is not an object of texts"},
        bad_parameters{"NumberInSplit", R"({"SourceAttributesSplit": {"Units": 5}})",
                       "'SourceAttributesSplit' is not an object of texts"},
        bad_parameters{"DestinationTwice", R"({"SourceAttributesSplit": {"Units": "Label"}})",
                       "'SourceAttributesSplit' cannot give a value to 'Label' twice"},
        bad_parameters{"ReservedDestination",
                       R"({"SourceAttributesSplit": {"Units": "StartTime"}})",
                       "'SourceAttributesSplit' cannot give a value to 'StartTime'"}),
    [](const auto& parameter) { return std::string{parameter.param.title}; });

TEST_F(SplitFailure, TakesAwayWhatWasMade) {
    auto source = make_source(1, 1, {"a", "b"});
    give_texts(source, "Notes", {"x", "y"});
    // No attribute can have this name, which shows only when the first channel is made.
    const auto message = split(
        {{"SourceAttributesSplit", {{"Notes", "a/b"}}}, {"DestinationGroup", "New/Group/Parts"}});
    EXPECT_EQ(
        message,
        "A set cannot be split : 'a/b' is no name: a component is empty or where none is allowed");
    EXPECT_FALSE(root_.exists_group("New"));
}

TEST_F(SplitFailure, LeavesAGroupThatExistedAsItWas) {
    auto source = make_source(1, 1, {"a", "b"});
    give_texts(source, "Notes", {"x", "y"});
    auto group = root_.create_group("Format/Data/Parts");
    group.create_set("a", shape({1}), data_type::int8);
    split({{"SourceAttributesSplit", {{"Notes", "a/b"}}}});
    EXPECT_EQ(group.list_set_children_name(), names{"a"});
    EXPECT_TRUE(group.list_attributes_name().empty());
}

} // namespace
