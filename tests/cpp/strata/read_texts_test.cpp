#include <strata/access/read_texts.hpp>

#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_store;
using strata::data_type;
using strata::read_text;
using strata::read_texts;
using strata_test::give_texts;
using strata_test::scalar;
using strata_test::shape;
using strata_test::whole;

using text_list = std::vector<std::string>;

class ReadTexts : public testing::Test {
  protected:
    strata::data_attribute text_attribute(const strata::data_shape& extents,
                                          const std::vector<const char*>& given) {
        auto attribute = store_.root().create_attribute("texts", extents, data_type::string);
        give_texts(attribute, given);
        return attribute;
    }
    strata::data_attribute number_attribute(const strata::data_shape& extents) {
        return store_.root().create_attribute("numbers", extents, data_type::float32);
    }

    data_store store_;
};

TEST_F(ReadTexts, TakesAllOfAnAttributeInOrder) {
    const auto attribute = text_attribute(shape({2, 2}), {"a", "", "c c", "\xC3\xA4"});
    EXPECT_EQ(read_texts(attribute), (text_list{"a", "", "c c", "\xC3\xA4"}));
}

TEST_F(ReadTexts, TakesAnAttributeWithoutDimensionsAsOne) {
    EXPECT_EQ(read_texts(text_attribute(scalar(), {"alone"})), text_list{"alone"});
}

TEST_F(ReadTexts, HasNoneOfAnEmptyAttribute) {
    EXPECT_EQ(read_texts(text_attribute(shape({0}), {})), text_list{});
}

TEST_F(ReadTexts, TakesWhatIsSelected) {
    auto set = store_.root().create_set("set", shape({3}), data_type::string);
    give_texts(whole(set), {"a", "b", "c"});
    EXPECT_EQ(read_texts(whole(set)), (text_list{"a", "b", "c"}));
    EXPECT_EQ(read_texts(strata_test::part(set, {1, 2})), (text_list{"b", "c"}));
}

TEST_F(ReadTexts, RefusesNumbersHoweverMany) {
    EXPECT_FALSE(read_texts(number_attribute(shape({2}))));
    EXPECT_FALSE(read_texts(whole(store_.root().create_set("set", shape({0}), data_type::int8))));
}

TEST_F(ReadTexts, RefusesWhatDenotesNothing) {
    EXPECT_FALSE(read_texts(strata::data_attribute{}));
    EXPECT_FALSE(read_texts(strata::data_selection{}));
    EXPECT_FALSE(read_text({}));
}

TEST_F(ReadTexts, RefusesASelectionOfMoreThanTheSetHasLeft) {
    auto set = store_.root().create_set("set", shape({3}), data_type::string);
    const auto selection = whole(set);
    strata_test::resize(set, {1});
    EXPECT_FALSE(read_texts(selection));
}

TEST_F(ReadTexts, TakesASingleTextWhateverItsDimensions) {
    EXPECT_EQ(read_text(text_attribute(scalar(), {"alone"})), "alone");
    EXPECT_EQ(read_text(store_.root().create_attribute("other", shape({1}), data_type::string)),
              "");
}

TEST_F(ReadTexts, TakesNoSingleTextOfSeveralOrOfANumber) {
    EXPECT_FALSE(read_text(text_attribute(shape({2}), {"a", "b"})));
    EXPECT_FALSE(read_text(number_attribute(scalar())));
}

} // namespace
