#include "plugins/data_modifier/channel_names.hpp"

#include <utility>

#include "schema/channel_names.hpp"

namespace data_modifier {

namespace {

std::string text_at(const std::vector<std::string>& texts, std::uint64_t index) {
    return index < texts.size() ? texts[index] : std::string{};
}

} // namespace

channel_names::channel_names(const strata::data_group& group, std::vector<std::string> preferred,
                             const std::vector<std::string>& labels)
    : preferred_(std::move(preferred)), labels_(labels) {
    for (const auto& name : group.list_set_children_name())
        taken_.take(name);
    for (const auto& name : group.list_group_children_name())
        taken_.take(name);
}

std::string channel_names::choose(std::uint64_t index) {
    auto base = text_at(preferred_, index);
    if (base.empty())
        base = text_at(labels_, index);
    if (base.empty())
        base = schema::unnamed_channel(static_cast<std::int64_t>(index));
    return taken_.take_distinct(schema::path_component(base));
}

} // namespace data_modifier
