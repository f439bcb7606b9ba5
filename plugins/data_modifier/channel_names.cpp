#include "plugins/data_modifier/channel_names.hpp"

#include <algorithm>
#include <utility>

namespace data_modifier {

namespace {

bool is_separator(char character) { return character == '/' || character == '\\'; }

std::string text_at(const std::vector<std::string>& texts, std::uint64_t index) {
    return index < texts.size() ? texts[index] : std::string{};
}

bool is_taken(const strata::data_group& group, const std::string& name) {
    return group.exists_set(name) || group.exists_group(name);
}

} // namespace

channel_names::channel_names(strata::data_group group, std::vector<std::string> preferred,
                             const std::vector<std::string>& labels)
    : group_(std::move(group)), preferred_(std::move(preferred)), labels_(labels) {}

std::string channel_names::choose(std::uint64_t index) {
    auto base = text_at(preferred_, index);
    if (base.empty())
        base = text_at(labels_, index);
    if (base.empty())
        // Kept: spelt with one n.
        base = "unamed_" + std::to_string(index);
    std::ranges::replace_if(base, is_separator, '_');

    if (!is_taken(group_, base))
        return base;
    auto& suffix = next_suffix_.try_emplace(base, 2).first->second;
    for (;; ++suffix) {
        auto name = base + "_" + std::to_string(suffix);
        if (!is_taken(group_, name))
            return name;
    }
}

} // namespace data_modifier
