#include "plugins/c3d/parameters/channel_entries.hpp"

#include <algorithm>

#include "plugins/c3d/bytes/format_limits.hpp"
#include "schema/file_text.hpp"

namespace c3d {

namespace {

constexpr std::uint64_t most_entries = largest_extent;

std::uint64_t entry_count(const parameter& item) noexcept {
    return item.type == element_type::character ? item.text_count() : item.element_count();
}

/// True for a parameter without a dimension that counts channels.
bool is_single(const parameter& item) noexcept {
    return item.dimensions.count() < (item.type == element_type::character ? 2u : 1u);
}

} // namespace

channel_entries::channel_entries(const parameter_table& parameters, std::string_view group,
                                 std::string_view name, single_value single) {
    const auto labels = parameters.parts(group, "LABELS");
    std::uint64_t first = 0;
    std::size_t index = 0;
    for (const auto* item : parameters.parts(group, name)) {
        parts_.push_back({item, first});
        // Writers that split their lists earlier than the format asks do so for the labels, too.
        const bool labels_go_on = index + 1 < labels.size();
        first += labels_go_on ? std::min(entry_count(*labels[index]), most_entries) : most_entries;
        ++index;
    }
    same_for_all_ = single == single_value::of_all_channels && parts_.size() == 1 &&
                    is_single(*parts_.front().item);
}

std::uint64_t channel_entries::count() const noexcept {
    if (parts_.empty())
        return 0;
    return parts_.back().first + entry_count(*parts_.back().item);
}

std::optional<channel_entries::place> channel_entries::find(std::uint64_t channel) const noexcept {
    if (same_for_all_)
        channel = 0;
    const auto behind =
        std::upper_bound(parts_.begin(), parts_.end(), channel,
                         [](auto value, const part& item) { return value < item.first; });
    if (behind == parts_.begin())
        return std::nullopt;
    const auto& found = *(behind - 1);
    const auto index = channel - found.first;
    if (index >= entry_count(*found.item))
        return std::nullopt;
    return place{found.item, index};
}

std::optional<std::string> channel_entries::text(std::uint64_t channel) const {
    const auto found = find(channel);
    if (!found || found->item->type != element_type::character)
        return std::nullopt;
    return schema::as_utf8(found->item->text(found->index));
}

std::optional<double> channel_entries::number(std::uint64_t channel) const noexcept {
    const auto found = find(channel);
    return found ? found->item->number(found->index) : std::nullopt;
}

std::optional<std::int16_t> channel_entries::word(std::uint64_t channel) const noexcept {
    const auto found = find(channel);
    if (!found || found->item->type != element_type::integer)
        return std::nullopt;
    return static_cast<std::int16_t>(found->item->number(found->index).value_or(0.0));
}

std::vector<std::string> channel_entries::all_texts() const {
    std::vector<std::string> texts;
    for (const auto& [item, first] : parts_) {
        if (item->type != element_type::character || item->data.empty())
            continue;
        for (std::uint64_t i = 0; i < item->text_count(); ++i)
            texts.push_back(schema::as_utf8(item->text(i)));
    }
    return texts;
}

} // namespace c3d
