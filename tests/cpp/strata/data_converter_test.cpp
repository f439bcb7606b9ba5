#include <array>

#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_store;
using strata::data_type;
using strata_test::shape;

TEST(StringBuffer, CleaningLeavesNullPointers) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", shape({2}), data_type::string);
    strata_test::give_texts(attribute, {"x", "y"});
    std::array<const char*, 2> texts{};
    ASSERT_TRUE(attribute.read_value(texts.data(), data_type::string));
    EXPECT_STREQ(texts[1], "y");
    strata::data_converter_string_clean_buffer(attribute.shape(), texts.data());
    EXPECT_EQ(texts[0], nullptr);
    EXPECT_EQ(texts[1], nullptr);
}

TEST(StringBuffer, TextsOutliveTheAttribute) {
    const char* text = nullptr;
    {
        const data_store store;
        auto attribute =
            store.root().create_attribute("a", strata_test::scalar(), data_type::string);
        attribute.write("kept");
        ASSERT_TRUE(attribute.read_value(&text, data_type::string));
    }
    EXPECT_STREQ(text, "kept");
    strata::data_converter_string_clean_buffer(strata_test::scalar(), &text);
}

} // namespace
