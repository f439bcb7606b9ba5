#pragma once

#include <string>
#include <utility>
#include <vector>

#include <strata/callable_builder.hpp>
#include <strata/plugin_manager.hpp>

#include "tests/cpp/strata/support/buffers.hpp"

namespace data_modifier_test {

using strata_test::shape;
using strata_test::texts;
using strata_test::values;
using strata_test::whole;

using names = std::vector<std::string>;

/// A store with a source set, and the plugin loaded.
class split_test : public testing::Test {
  protected:
    split_test() {
        EXPECT_TRUE(manager_.load(nullptr, DATA_MODIFIER_PLUGIN));
        root_.create_group("Format/Data");
    }

    /// Creates the source "Format/Data/Source" of `channels` channels with the values 0, 1, 2, ...
    /// and `labels`.
    strata::data_set make_source(std::int64_t components, std::int64_t samples,
                                 const std::vector<const char*>& labels) {
        const auto channels = static_cast<std::int64_t>(labels.size());
        auto set =
            strata_test::counting_set(root_, "Format/Data/Source", {components, channels, samples});
        give_texts(set, "Labels", labels);
        give_number<std::int64_t>(set, "NumSamples", samples);
        give_number(set, "SampleRate", 100.0);
        give_number(set, "StartTime", 0.25);
        return set;
    }

    static void give_texts(strata::data_set set, const char* name,
                           const std::vector<const char*>& given) {
        strata_test::give_texts(
            set.create_attribute(name, shape({static_cast<std::int64_t>(given.size())}),
                                 strata::data_type::string),
            given);
    }

    template <typename Number>
    static void give_number(strata::data_set set, const char* name, Number value) {
        strata_test::give<Number>(
            set.create_attribute(name, strata_test::scalar(), strata_test::type_of<Number>()),
            {value});
    }

    template <typename Number>
    static void give_numbers(strata::data_set set, const char* name,
                             const std::vector<Number>& given) {
        const auto extent = shape({static_cast<std::int64_t>(given.size())});
        strata_test::give<Number>(
            set.create_attribute(name, extent, strata_test::type_of<Number>()), given);
    }

    /// Splits the source into "Format/Data/Parts"; `changes` override the parameters. The messages
    /// of the status.
    std::string split(const anvil::json& changes = anvil::json::object()) {
        anvil::json parameters{{"callable_unit", "tarvex.data-modifier.split-set"},
                               {"SourceSet", "Format/Data/Source"},
                               {"DestinationGroup", "Format/Data/Parts"},
                               {"SourceAttributesSplit", {{"Labels", "Label"}}}};
        parameters.merge_patch(changes);
        return strata::callable_builder{}.evaluate(root_, parameters).message("|");
    }

    [[nodiscard]] strata::data_group parts() const {
        return root_.retrieve_group("Format/Data/Parts");
    }
    [[nodiscard]] strata::data_set part(const std::string& name) const {
        return parts().retrieve_set(name);
    }

    /// One attribute of one part.
    template <typename Number>
    [[nodiscard]] Number number(const std::string& name, const char* attribute) const {
        return values<Number>(part(name).retrieve_attribute(attribute)).at(0);
    }
    [[nodiscard]] std::string text(const std::string& name, const char* attribute) const {
        return texts(part(name).retrieve_attribute(attribute)).at(0);
    }

    strata::plugin_manager manager_;
    strata::data_store store_;
    strata::data_group root_ = store_.root();
};

} // namespace data_modifier_test
