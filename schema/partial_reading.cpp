#include "schema/partial_reading.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

#include <fmt/format.h>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"

namespace schema {

namespace {

struct counted_kind {
    std::string_view kind;
    std::string_view singular;
};

/// In the order in which they are told.
constexpr std::array<counted_kind, 7> counted_kinds{{
    {name::markers, "marker"},
    {name::angles, "angle"},
    {name::forces, "force"},
    {name::moments, "moment"},
    {name::powers, "power"},
    {name::analogs, "analog channel"},
    {name::rotations, "rotation"},
}};

/// The attributes of the root that keep channels.
struct record {
    const char* kinds;
    const char* labels;
    const char* units;
};

constexpr record of_file{attribute::unread_kinds, attribute::unread_labels,
                         attribute::unread_units};
constexpr record of_other{attribute::other_unread_kinds, attribute::other_unread_labels,
                          attribute::other_unread_units};

void append(std::vector<std::string>& texts, std::vector<std::string> more) {
    texts.insert(texts.end(), std::make_move_iterator(more.begin()),
                 std::make_move_iterator(more.end()));
}

void append(unread_channels& channels, unread_channels more) {
    append(channels.kinds, std::move(more.kinds));
    append(channels.labels, std::move(more.labels));
    append(channels.units, std::move(more.units));
}

void replace(strata::data_group& root, const char* name, const std::vector<std::string>& texts) {
    if (root.exists_attribute(name))
        root.delete_attribute(name);
    write_texts(root, name, texts);
}

unread_channels read(const strata::data_group& root, const record& names) {
    unread_channels channels;
    channels.kinds = read_texts(root.retrieve_attribute(names.kinds));
    channels.labels = read_texts(root.retrieve_attribute(names.labels));
    channels.units = read_texts(root.retrieve_attribute(names.units));
    // Whatever an image of a store says.
    channels.labels.resize(channels.kinds.size());
    channels.units.resize(channels.kinds.size());
    return channels;
}

void keep(strata::data_group& root, const record& names, const unread_channels& channels) {
    if (channels.kinds.empty())
        return;
    auto all = read(root, names);
    append(all, channels);
    replace(root, names.kinds, all.kinds);
    replace(root, names.labels, all.labels);
    replace(root, names.units, all.units);
}

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): handles that are written through are values
void ask_for_kinds(strata::data_group root, const std::vector<std::string>& kinds) {
    write_texts(root, attribute::wanted_kinds, kinds);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
void forget_asked_kinds(strata::data_group root) {
    if (root.exists_attribute(attribute::wanted_kinds))
        root.delete_attribute(attribute::wanted_kinds);
}

wanted_kinds::wanted_kinds(const strata::data_group& root) {
    if (const auto kinds = root.retrieve_attribute(attribute::wanted_kinds))
        kinds_ = read_texts(kinds);
}

bool wanted_kinds::contain(std::string_view kind) const {
    return !kinds_ || std::ranges::find(*kinds_, kind) != kinds_->end();
}

void unread_channels::add(std::string_view kind, const std::string& label,
                          const std::string& unit) {
    kinds.emplace_back(kind);
    labels.push_back(label);
    units.push_back(unit);
}

bool unread_channels::contain(std::string_view kind) const {
    return std::ranges::find(kinds, kind) != kinds.end();
}

std::vector<std::string> unread_channels::labels_of(std::string_view kind) const {
    std::vector<std::string> found;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (kinds[i] == kind)
            found.push_back(labels[i]);
    }
    return found;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
void keep_unread(strata::data_group root, const unread_channels& channels) {
    keep(root, of_file, channels);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
void keep_unread_of_other(strata::data_group root, const unread_channels& channels) {
    keep(root, of_other, channels);
}

unread_channels unread_of_file(const strata::data_group& root) { return read(root, of_file); }

unread_channels unread_of(const strata::data_group& root) {
    auto channels = read(root, of_file);
    append(channels, read(root, of_other));
    return channels;
}

std::string counts_of(const unread_channels& channels) {
    std::vector<std::string> counts;
    for (const auto& [kind, singular] : counted_kinds) {
        if (const auto count = std::ranges::count(channels.kinds, kind); count != 0)
            counts.push_back(fmt::format("{} {}{}", count, singular, count == 1 ? "" : "s"));
    }
    std::string text;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (i != 0)
            text += i + 1 == counts.size() ? " and " : ", ";
        text += counts[i];
    }
    return text;
}

} // namespace schema
