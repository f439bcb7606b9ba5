#include "tests/cpp/data_modifier/support/split_test.hpp"
#include "tests/cpp/strata/support/failing_new.hpp"

namespace {

class SplitMemory : public data_modifier_test::split_test {
  protected:
    /// Whether a split into `destination` succeeds though one allocation, the one with this index,
    /// fails.
    bool succeeds(const std::string& destination, std::size_t failing_allocation) {
        const anvil::json parameters{
            {"callable_unit", "tarvex.data-modifier.split-set"},
            {"SourceSet", "Format/Data/Source"},
            {"DestinationGroup", destination},
            {"SourceAttributesSplit", {{"Units", "Unit"}, {"Gain", "Gain"}}}};
        try {
            const strata_test::failing_new arranged{failing_allocation};
            return static_cast<bool>(strata::callable_builder{}.evaluate(root_, parameters));
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    void make_full_source() {
        auto source = make_source(3, 2, {"a label that is too long for its place", "b"});
        give_texts(source, "Units", {"a unit that is too long for its place", "mm"});
        give_numbers<std::int32_t>(source, "Gain", {1, 2});
        strata::create_row_attribute(source, "Residuals",
                                     strata_test::buffers<float>({{1, 2}, {3, 4}}));
    }
};

TEST_F(SplitMemory, ThatRunsOutLeavesNothingBehind) {
    make_full_source();
    std::size_t failures = 0;
    for (; !succeeds("New/Parts", failures); ++failures)
        ASSERT_FALSE(root_.exists_group("New")) << failures;
    EXPECT_GT(failures, 50U);
    EXPECT_EQ(root_.retrieve_group("New/Parts").list_set_children_name().size(), 2U);
}

TEST_F(SplitMemory, ThatRunsOutLeavesAnExistingGroupWithoutNewSets) {
    make_full_source();
    auto group = root_.create_group("Existing");
    std::size_t failures = 0;
    for (; !succeeds("Existing", failures); ++failures)
        ASSERT_TRUE(group.list_set_children_name().empty()) << failures;
    EXPECT_GT(failures, 50U);
    EXPECT_EQ(group.list_set_children_name().size(), 2U);
}

} // namespace
