#include "plugins/c3d/parameters/put_parameter.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "plugins/c3d/bytes/format_limits.hpp"
#include "plugins/c3d/parameters/parameter_values.hpp"

namespace c3d {

namespace {

parameter as_read(const written_parameter& item) {
    parameter seen;
    seen.type = item.type;
    seen.dimensions = parameter_dimensions(std::as_bytes(std::span(item.extents)));
    seen.data = item.data;
    return seen;
}

/// Readers differ in what they make of a count that is a fraction.
bool is_whole(std::optional<double> number) { return number && std::trunc(*number) == *number; }

/// The extents that a single value keeps.
std::vector<std::uint8_t> single_extents(const written_parameter& item) {
    const bool is_single = item.type != element_type::character && item.element_count() == 1;
    return is_single ? item.extents : std::vector<std::uint8_t>{};
}

written_parameter& reach(written_group& group, std::string_view name, new_lock lock) {
    if (auto* found = group.find(name))
        return *found;
    auto& made = group.reach(name);
    made.locked = lock == new_lock::on;
    return made;
}

std::string part_name(std::string_view name, std::size_t part) {
    return part == 0 ? std::string(name) : fmt::format("{}{}", name, part + 1);
}

/// The parameter of part `part`; a new one comes directly behind the part before it.
written_parameter& reach_part(written_group& group, std::string_view name, std::size_t part) {
    const auto full_name = part_name(name, part);
    if (auto* found = group.find(full_name))
        return *found;
    if (part == 0)
        return group.reach(full_name);
    const auto* former = group.find(part_name(name, part - 1));
    written_parameter made;
    made.name = full_name;
    made.locked = former->locked;
    const auto behind = group.parameters.begin() + (former - group.parameters.data()) + 1;
    return *group.parameters.insert(behind, std::move(made));
}

void remove_parts(written_group& group, std::string_view name, std::size_t first) {
    for (auto part = first; group.find(part_name(name, part)); ++part)
        group.remove(part_name(name, part));
}

/// Calls `fill(parameter, values of the part)` for each part.
template <typename Value, typename Fill>
void put_list(written_group& group, std::string_view name, std::span<const Value> values,
              std::size_t values_per_entry, Fill fill) {
    const auto step = largest_extent * values_per_entry;
    std::size_t part = 0;
    do {
        const auto first = part * step;
        const auto count = std::min(step, values.size() - first);
        fill(reach_part(group, name, part), values.subspan(first, count));
        ++part;
    } while (part * step < values.size());
    remove_parts(group, name, part);
}

template <typename Value> std::vector<std::uint8_t> list_extents(std::span<const Value> values) {
    return {static_cast<std::uint8_t>(values.size())};
}

} // namespace

void put_count(written_group& group, std::string_view name, std::uint64_t value, new_lock lock) {
    auto& item = reach(group, name, lock);
    const auto seen = as_read(item);
    if (!item.data.empty() && seen.count(0) == value && is_whole(seen.number(0)))
        return;
    auto extents = single_extents(item);
    if (item.type == element_type::real || value > 65535) {
        set_reals(item, std::array{static_cast<float>(value)}, std::move(extents));
    } else if (item.type == element_type::byte && !item.data.empty() && value <= 255) {
        set_bytes(item, std::array{static_cast<std::int64_t>(value)}, std::move(extents));
    } else {
        set_words(item, std::array{static_cast<std::int64_t>(value)}, std::move(extents));
    }
}

void put_real(written_group& group, std::string_view name, float value, new_lock lock) {
    auto& item = reach(group, name, lock);
    const auto seen = as_read(item);
    if (!item.data.empty() && seen.number(0) == double{value})
        return;
    set_reals(item, std::array{value}, single_extents(item));
}

void put_block(written_group& group, std::string_view name, std::uint64_t block) {
    auto& item = reach(group, name, new_lock::on);
    set_words(item, std::array{static_cast<std::int64_t>(block)}, single_extents(item));
}

void put_text(written_group& group, std::string_view name, const std::string& value,
              std::size_t least_width, new_lock lock) {
    auto& item = reach(group, name, lock);
    if (!item.extents.empty() && item.type == element_type::character)
        least_width = std::max<std::size_t>(least_width, item.extents.front());
    const bool is_list = item.type == element_type::character && item.extents.size() == 2;
    const std::vector<std::int64_t> extents(is_list ? 1 : 0, 1);
    set_texts(item, {group.name, item.name}, std::span(&value, 1), extents, {least_width});
    remove_parts(group, name, 1);
}

void put_texts(written_group& group, std::string_view name, std::span<const std::string> texts,
               std::size_t least_width) {
    put_list(group, name, texts, 1, [&](written_parameter& item, auto part) {
        auto width = least_width;
        if (item.type == element_type::character && !item.extents.empty())
            width = std::max<std::size_t>(width, item.extents.front());
        const std::array extents = {static_cast<std::int64_t>(part.size())};
        set_texts(item, {group.name, item.name}, part, extents, {width});
    });
}

void put_words(written_group& group, std::string_view name, std::span<const std::int64_t> values) {
    put_list(group, name, values, 1,
             [](written_parameter& item, auto part) { set_words(item, part, list_extents(part)); });
}

void put_reals(written_group& group, std::string_view name, std::span<const float> values) {
    put_list(group, name, values, 1,
             [](written_parameter& item, auto part) { set_reals(item, part, list_extents(part)); });
}

void put_small_numbers(written_group& group, std::string_view name,
                       std::span<const std::int64_t> values) {
    const bool fit = std::all_of(values.begin(), values.end(),
                                 [](auto value) { return value >= 0 && value <= 127; });
    put_list(group, name, values, 1, [&](written_parameter& item, auto part) {
        if (fit && item.type == element_type::byte && !item.data.empty())
            set_bytes(item, part, list_extents(part));
        else
            set_words(item, part, list_extents(part));
    });
}

void put_pairs(written_group& group, std::string_view name, std::span<const float> values) {
    put_list(group, name, values, 2, [](written_parameter& item, auto part) {
        set_reals(item, part, {2, static_cast<std::uint8_t>(part.size() / 2)});
    });
}

void remove_list(written_group& group, std::string_view name) { remove_parts(group, name, 0); }

} // namespace c3d
