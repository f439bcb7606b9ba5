#include "schema/analog_pairing.hpp"

#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <strata/data_store.hpp>

#include "schema/partial_reading.hpp"
#include "schema/write_attribute.hpp"

namespace {

using schema::pair_analogs;
using schema::sets_by_index;
using schema::write_number;
using schema::write_texts;
using testing::ElementsAre;
using testing::IsEmpty;

class AnalogPairing : public testing::Test {
  protected:
    strata::data_set add_set(const std::string& name, const std::string& label) {
        auto set = channels_.create_set(name, strata::data_shape({1, 1, 2}, false),
                                        strata::data_type::float64);
        schema::write_text(set, "Label", label);
        write_number(set, "RelativeSetIndex", next_index_++);
        return set;
    }

    void add_sets(const std::vector<std::string>& labels) {
        for (const auto& label : labels)
            add_set(label, label);
    }

    void set_labels(const std::vector<std::string>& labels, const std::string& name = "LABELS") {
        write_texts(parameters_, name, labels);
    }

    void set_columns_of_file(const std::vector<std::string>& set_names) {
        const auto count = static_cast<std::int64_t>(set_names.size());
        auto raw = root_.create_set("Format/Data/Analogs", strata::data_shape({1, count, 2}, false),
                                    strata::data_type::float64);
        write_texts(raw, "SetNames", set_names);
    }

    /// Names of the sets, "-" for none.
    [[nodiscard]] std::vector<std::string> paired() const {
        std::vector<std::string> names;
        for (const auto& set : pair_analogs(root_))
            names.push_back(set ? set.name() : "-");
        return names;
    }

    strata::data_store store_;
    strata::data_group root_ = store_.root();
    strata::data_group parameters_ = root_.create_group("Format/Metadata/ANALOG");
    strata::data_group channels_ = root_.create_group("Format/Data/AnalogsExport");
    std::int32_t next_index_ = 0;
};

TEST_F(AnalogPairing, EntriesAskForTheSetOfTheirName) {
    add_sets({"Fz", "Fx", "Fy"});
    set_labels({"Fx", "Fy", "Fz"});
    EXPECT_THAT(paired(), ElementsAre("Fx", "Fy", "Fz"));
}

TEST_F(AnalogPairing, ColumnsThatWereNotReadKeepTheirNumbers) {
    schema::unread_channels unread;
    for (const auto* label : {"Fx", "Fy", "Fz"})
        unread.add("Analogs", label, "N");
    schema::keep_unread(root_, unread);
    add_sets({"mine", "Fy"});
    EXPECT_THAT(paired(), ElementsAre("-", "-", "-", "mine", "Fy"));
    set_labels({"Fx", "Fy"});
    EXPECT_THAT(paired(), ElementsAre("-", "Fy", "-", "mine"));
}

TEST_F(AnalogPairing, AnEditedLabelChangesNothing) {
    add_set("Fx", "Fy");
    add_set("Fy", "Fx");
    set_labels({"Fx", "Fy"});
    EXPECT_THAT(paired(), ElementsAre("Fx", "Fy"));
}

TEST_F(AnalogPairing, ALabelIsFoundWhereNoSetHasTheName) {
    add_set("EMG", "EMG");
    add_set("old", "Fx");
    set_labels({"Fx", "EMG"});
    EXPECT_THAT(paired(), ElementsAre("old", "EMG"));
}

TEST_F(AnalogPairing, ASetIsNotGivenAwayForItsLabelWhileItsNameIsAskedFor) {
    add_set("Fy", "Fx");
    set_labels({"Fx", "Fy"});
    EXPECT_THAT(paired(), ElementsAre("-", "Fy"));
}

TEST_F(AnalogPairing, SetsOfOneLabelAreGivenInOrder) {
    add_set("a", "Fx");
    add_set("b", "Fx");
    set_labels({"Fx", "Fx", "Fx"});
    EXPECT_THAT(paired(), ElementsAre("a", "b", "-"));
}

TEST_F(AnalogPairing, RepeatedLabelsMeanTheNumberedNames) {
    add_set("A", "A");
    add_set("A_2", "A");
    set_labels({"A", "A"});
    EXPECT_THAT(paired(), ElementsAre("A", "A_2"));
}

TEST_F(AnalogPairing, SeparatorsOfPathsAreReplacedInNames) {
    add_set("L_Fx", "L/Fx");
    set_labels({"L/Fx"});
    EXPECT_THAT(paired(), ElementsAre("L_Fx"));
}

TEST_F(AnalogPairing, ColumnsWithoutTextAreNamedByTheirIndex) {
    set_columns_of_file({"A", "unamed_1", "unamed_2"});
    add_set("A", "A");
    add_set("unamed_1", "");
    add_set("unamed_2", "");
    set_labels({"A", ""});
    EXPECT_THAT(paired(), ElementsAre("A", "unamed_1", "unamed_2"));
}

TEST_F(AnalogPairing, AnEmptyEntryMatchesNoEmptyLabel) {
    add_set("stray", "");
    set_labels({""});
    EXPECT_THAT(paired(), ElementsAre("-", "stray"));
}

TEST_F(AnalogPairing, AnEditedEntryKeepsTheSetOfItsColumn) {
    set_columns_of_file({"A", "B", "C"});
    add_sets({"A", "B", "C"});
    set_labels({"A", "edited", "C"});
    EXPECT_THAT(paired(), ElementsAre("A", "B", "C"));
}

TEST_F(AnalogPairing, AnEditedEntryLeavesTheSetOfItsColumnToAnotherThatAsksForIt) {
    set_columns_of_file({"A", "B", "C"});
    add_sets({"A", "B", "C"});
    set_labels({"B", "edited", "C"});
    EXPECT_THAT(paired(), ElementsAre("B", "-", "C", "A"));
}

TEST_F(AnalogPairing, ChannelsThatNoEntryNamesFollowInTheirOrder) {
    set_columns_of_file({"A", "B"});
    add_sets({"new", "B", "A", "another"});
    set_labels({"A", "B"});
    EXPECT_THAT(paired(), ElementsAre("A", "B", "new", "another"));
    EXPECT_EQ(schema::known_analog_columns(root_), 2U);
}

TEST_F(AnalogPairing, ChannelsOfANewAcquisitionHaveNoKnownColumns) {
    add_sets({"A", "B"});
    EXPECT_EQ(schema::known_analog_columns(root_), 0U);
}

TEST_F(AnalogPairing, EntriesBeyondTheColumnsOfTheFileDoNotChangeNames) {
    set_columns_of_file({"A", "A_2"});
    add_set("A", "A");
    add_set("A_2", "A");
    set_labels({"A", "A", "A_2", "B"});
    EXPECT_THAT(paired(), ElementsAre("A", "A_2", "-", "-"));
}

TEST_F(AnalogPairing, NumberedContinuationsGoOn) {
    add_sets({"A", "B", "C"});
    set_labels({"A"});
    set_labels({"C"}, "LABELS2");
    set_labels({"B"}, "LABELS3");
    EXPECT_THAT(paired(), ElementsAre("A", "C", "B"));
}

TEST_F(AnalogPairing, WithoutLabelsTheColumnsAreTheSetsByIndex) {
    next_index_ = 1;
    add_sets({"x", "y"});
    next_index_ = 0;
    add_sets({"z"});
    EXPECT_THAT(paired(), ElementsAre("z", "x", "y"));
}

TEST_F(AnalogPairing, WithoutLabelsAColumnOutlivesTheRemovalOfOthers) {
    set_columns_of_file({"unamed_0", "unamed_1", "unamed_2"});
    add_set("unamed_1", "");
    add_set("unamed_2", "");
    add_set("new", "new");
    EXPECT_THAT(paired(), ElementsAre("-", "unamed_1", "unamed_2", "new"));
}

TEST_F(AnalogPairing, LabelsThatAreNumbersNameNothing) {
    add_sets({"x"});
    schema::write_numbers(parameters_, "LABELS", std::vector<float>{1.0F});
    EXPECT_THAT(paired(), ElementsAre("x"));
}

TEST_F(AnalogPairing, WithoutAnyGroupThereIsNothing) {
    EXPECT_THAT(pair_analogs(strata::data_store().root()), IsEmpty());
}

TEST_F(AnalogPairing, WithoutChannelsTheEntriesAreEmpty) {
    set_labels({"Fx", "Fy"});
    EXPECT_THAT(paired(), ElementsAre("-", "-"));
}

TEST_F(AnalogPairing, ManyEntriesOfOneLabelAreAllPaired) {
    for (int i = 0; i < 20000; ++i)
        add_set("set" + std::to_string(i), "A");
    set_labels(std::vector<std::string>(20000, "A"));
    const auto names = paired();
    EXPECT_EQ(names.front(), "set0");
    EXPECT_EQ(names.back(), "set19999");
}

TEST_F(AnalogPairing, SetsWithoutIndexComeLast) {
    channels_.create_set("none", strata::data_shape({1, 1, 2}, false), strata::data_type::float64);
    next_index_ = 5;
    add_sets({"five", "six"});
    next_index_ = 0;
    add_sets({"zero"});
    std::vector<std::string> names;
    for (const auto& set : sets_by_index(channels_))
        names.push_back(set.name());
    EXPECT_THAT(names, ElementsAre("zero", "five", "six", "none"));
}

} // namespace
