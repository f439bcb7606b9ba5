#include "platform/strata/src/tree/set_index.hpp"

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "platform/strata/src/tree/attribute_node.hpp"

namespace strata::detail {

namespace {

constexpr auto no_place = std::numeric_limits<std::size_t>::max();

std::string key_of(std::int32_t number) {
    std::string key(sizeof number, '\0');
    std::memcpy(key.data(), &number, sizeof number);
    return key;
}

/// The key of a single text; nothing for anything else.
std::optional<std::string> text_key_of(const attribute_node& attribute) {
    if (attribute.elements() || element_kind(attribute.type()) != data_type::string)
        return std::nullopt;
    return std::string(attribute.text());
}

/// The key of a single number; nothing for anything else.
std::optional<std::string> number_key_of(const attribute_node& attribute) {
    std::int32_t number = 0;
    if (attribute.elements() || element_kind(attribute.type()) == data_type::string ||
        !attribute.read(&number, data_type::int32))
        return std::nullopt;
    return key_of(number);
}

void enter_ascending(std::vector<std::size_t>& places, std::size_t place) {
    const auto next = std::ranges::lower_bound(places, place);
    if (next == places.end() || *next != place)
        places.insert(next, place);
}

/// Drops the places before the first of which `is_true` says so.
template <typename IsTrue> void drop_until(std::vector<std::size_t>& places, IsTrue is_true) {
    places.erase(places.begin(), std::ranges::find_if(places, is_true));
}

} // namespace

void key_watch::note(std::string_view name) noexcept {
    if (index_ && index_->has_column(name))
        note();
}

void key_watch::note() noexcept {
    if (!index_ || is_noted_)
        return;
    is_noted_ = true;
    next_noted_ = index_->noted_;
    index_->noted_ = this;
}

void key_watch::lose() noexcept {
    is_lost_ = true;
    note();
}

void set_index::clear() noexcept {
    for (const auto& watch : watches_) {
        if (watch)
            watch->index_ = nullptr;
    }
    watches_.clear();
    columns_.clear();
    shares_content_ = false;
    noted_ = nullptr;
}

bool set_index::has_column(std::string_view name) const noexcept {
    return std::ranges::any_of(columns_, [&](const column& each) { return each.name == name; });
}

void set_index::enter(column& into, const set_entry& entry, std::size_t place) {
    auto* attribute = entry.content()->attributes().find(into.name);
    if (!attribute)
        return;
    attribute->watch(watches_[place]);
    const auto key =
        into.kind == key_kind::text ? text_key_of(*attribute) : number_key_of(*attribute);
    enter_ascending(key ? into.by_key[*key] : into.odd, place);
    ++into.entered;
}

void set_index::take_in(const sets& group, std::size_t place) {
    watches_.emplace_back();
    const auto* entry = group.at(place);
    if (!entry)
        return;
    auto& attributes = entry->content()->attributes();
    shares_content_ = shares_content_ || attributes.watching_index() == this;
    watches_.back() = counted_ptr{new key_watch{*this, place}};
    attributes.watch(watches_.back());
    for (auto& each : columns_)
        enter(each, *entry, place);
}

/// Takes in again what was noted, but for what has left the group.
void set_index::look_again(const sets& group) {
    while (noted_) {
        auto& watch = *std::exchange(noted_, noted_->next_noted_);
        watch.is_noted_ = false;
        const auto* entry = group.at(watch.place_);
        if (!entry)
            continue;
        auto& attributes = entry->content()->attributes();
        if (std::exchange(watch.is_lost_, false) && attributes.watching_index() != this)
            attributes.watch(watches_[watch.place_]);
        for (auto& each : columns_)
            enter(each, *entry, watch.place_);
    }
}

/// Begins anew where the places are no longer true, and where most of what is there is for former
/// values: that takes as long as the changes that led to it.
void set_index::bring_up_to_date(const sets& group) {
    constexpr std::size_t some = 64;
    const auto is_stale = [&](const column& each) {
        return each.entered > some + 2 * watches_.size();
    };
    if (group.layout() != layout_ || std::ranges::any_of(columns_, is_stale)) {
        clear();
        layout_ = group.layout();
    }
    while (watches_.size() < group.places())
        take_in(group, watches_.size());
    look_again(group);
}

set_index::column& set_index::column_for(const sets& group, std::string_view name, key_kind kind) {
    const auto found = std::ranges::find_if(
        columns_, [&](const column& each) { return each.kind == kind && each.name == name; });
    if (found != columns_.end())
        return *found;
    auto& made = columns_.emplace_back(column{std::string(name), kind, {}, {}, 0});
    for (std::size_t place = 0; place < watches_.size(); ++place) {
        if (const auto* entry = group.at(place))
            enter(made, *entry, place);
    }
    return made;
}

set_entry* set_index::find(const sets& group, std::string_view name, key_kind kind,
                           const std::string& key, const odd_match& matches) {
    const auto attribute_at = [&](std::size_t place) {
        const auto* entry = group.at(place);
        return entry ? entry->content()->attributes().find(name) : nullptr;
    };
    const auto key_at = [&](std::size_t place) {
        const auto* attribute = attribute_at(place);
        if (!attribute)
            return std::optional<std::string>();
        return kind == key_kind::text ? text_key_of(*attribute) : number_key_of(*attribute);
    };
    const auto is_odd_match = [&](std::size_t place) {
        auto* attribute = attribute_at(place);
        return attribute && !key_at(place) && matches(counted_ptr{attribute});
    };

    bring_up_to_date(group);
    if (shares_content_) {
        for (std::size_t place = 0; place < group.places(); ++place) {
            if (key_at(place) == key || is_odd_match(place))
                return group.at(place);
        }
        return nullptr;
    }
    auto& known = column_for(group, name, kind);
    auto first = no_place;
    if (const auto found = known.by_key.find(key); found != known.by_key.end()) {
        auto& candidates = found->second;
        drop_until(candidates, [&](std::size_t place) { return key_at(place) == key; });
        if (!candidates.empty())
            first = candidates.front();
    }
    for (const auto place : known.odd) {
        if (place < first && is_odd_match(place)) {
            first = place;
            break;
        }
    }
    return first == no_place ? nullptr : group.at(first);
}

std::optional<std::vector<std::string>> set_index::true_texts(const sets& group,
                                                              std::string_view name) {
    const auto attribute_at = [&](std::size_t place) {
        const auto* entry = group.at(place);
        return entry ? entry->content()->attributes().find(name) : nullptr;
    };
    const auto text_at = [&](std::size_t place) {
        const auto* attribute = attribute_at(place);
        return attribute ? text_key_of(*attribute) : std::nullopt;
    };

    bring_up_to_date(group);
    if (shares_content_)
        return std::nullopt;
    auto& known = column_for(group, name, key_kind::text);
    if (std::ranges::any_of(
            known.odd, [&](std::size_t place) { return attribute_at(place) && !text_at(place); }))
        return std::nullopt;
    std::vector<std::pair<std::size_t, std::string>> first_places;
    for (auto& [text, candidates] : known.by_key) {
        drop_until(candidates, [&](std::size_t place) { return text_at(place) == text; });
        if (!candidates.empty())
            first_places.emplace_back(candidates.front(), text);
    }
    std::erase_if(known.by_key, [](const auto& each) { return each.second.empty(); });
    std::ranges::sort(first_places);
    std::vector<std::string> texts;
    texts.reserve(first_places.size());
    for (auto& [place, text] : first_places)
        texts.push_back(std::move(text));
    return texts;
}

std::optional<std::vector<std::string>> set_index::texts(const sets& group, std::string_view name) {
    try {
        return true_texts(group, name);
    } catch (...) {
        clear();
        throw;
    }
}

set_entry* set_index::find(const sets& group, std::string_view name, std::string_view text,
                           const odd_match& matches) {
    try {
        return find(group, name, key_kind::text, std::string(text), matches);
    } catch (...) { // whatever it was in the middle of
        clear();
        throw;
    }
}

set_entry* set_index::find(const sets& group, std::string_view name, std::int32_t number,
                           const odd_match& matches) {
    try {
        return find(group, name, key_kind::number, key_of(number), matches);
    } catch (...) {
        clear();
        throw;
    }
}

} // namespace strata::detail
