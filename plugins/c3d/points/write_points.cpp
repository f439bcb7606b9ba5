#include "plugins/c3d/points/write_points.hpp"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"
#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/parameters/put_entries.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"
#include "plugins/c3d/points/point_kinds.hpp"
#include "schema/point_kind_table.hpp"

namespace c3d {

namespace {

using schema::marker_kind;
using schema::point_kind;
using schema::point_kind_table;

constexpr std::size_t least_label_width = 4;
constexpr std::size_t unit_width = 4;
constexpr std::size_t most_points = largest_word;

using label_set = std::unordered_set<std::string>;

/// The lists of kinds, and what their entries mean.
class kind_lists {
  public:
    kind_lists(std::span<const point_column> points, std::span<const std::string> labels_read)
        : points_(points), read_(labels_read.begin(), labels_read.end()) {
        for (const auto& point : points)
            labels_.insert(point.label);
    }

    /// True when a reader finds every point's kind, and no entry means a point that is gone.
    [[nodiscard]] bool are_told_by(const parameter_table& table) const {
        const point_kinds kinds(table);
        const bool told = std::ranges::all_of(points_, [&](const auto& point) {
            return kinds.type_of(point.label) == point.kind->word;
        });
        return told && std::ranges::none_of(point_kind_table, [&](const auto& kind) {
                   const channel_entries list(table, "POINT", kind.list_parameter);
                   return std::ranges::any_of(
                       list.all_texts(), [&](const auto& entry) { return means_former(entry); });
               });
    }

    /// The entries of `former` that still hold or never meant a point, in their order, and the
    /// points that it does not have yet.
    [[nodiscard]] std::vector<std::string> entries(const point_kind& kind,
                                                   const std::vector<std::string>& former) const {
        label_set missing;
        for (const auto& point : points_) {
            if (point.kind == &kind)
                missing.insert(point.label);
        }
        const auto members = missing;
        std::vector<std::string> entries;
        for (const auto& entry : former) {
            if (entry.empty() || (!members.contains(entry) && is_known(entry)))
                continue;
            entries.push_back(entry);
            missing.erase(entry);
        }
        for (const auto& point : points_) {
            if (point.kind == &kind && missing.erase(point.label) != 0)
                entries.push_back(point.label);
        }
        return entries;
    }

  private:
    [[nodiscard]] bool is_known(const std::string& entry) const {
        return labels_.contains(entry) || read_.contains(entry);
    }
    [[nodiscard]] bool means_former(const std::string& entry) const {
        return !entry.empty() && read_.contains(entry) && !labels_.contains(entry);
    }

    std::span<const point_column> points_;
    label_set labels_;
    label_set read_;
};

void put_kinds(parameter_tree& tree, std::span<const point_column> points,
               std::span<const std::string> labels_read) {
    const kind_lists lists(points, labels_read);
    if (lists.are_told_by(tree.as_table()))
        return;
    auto& group = tree.reach("POINT");
    for (const auto& kind : point_kind_table) {
        const auto name = kind.list_parameter;
        if (name.empty())
            continue;
        const auto former = channel_entries(tree.as_table(), "POINT", name).all_texts();
        const auto entries = lists.entries(kind, former);
        if (entries == former)
            continue;
        if (entries.empty()) {
            remove_list(group, name);
            continue;
        }
        if (!group.find(name) && !group.find(kind.unit_parameter))
            put_text(group, kind.unit_parameter, std::string(kind.usual_unit), unit_width);
        put_texts(group, name, entries, least_label_width);
    }
}

/// The unit of a kind: the first known one in the order of the store, in which points that became
/// one of the kind come behind.
std::string unit_of(std::span<const point_column> points, const point_kind& kind,
                    schema::warnings& notes) {
    const point_column* first = nullptr;
    for (const auto& point : points) {
        const bool is_candidate = point.kind == &kind && !point.unit.empty();
        if (is_candidate && (!first || point.listed < first->listed))
            first = &point;
    }
    if (!first)
        return {};
    for (const auto& point : points) {
        if (point.kind != &kind || point.unit.empty() || point.unit == first->unit)
            continue;
        notes.add("points of the kind '{}' have the units '{}' and '{}'; a C3D file has one, the "
                  "first is written",
                  kind.word, first->unit, point.unit);
    }
    return first->unit;
}

/// Whether a reader gives every point the unit that it has; unknown ones may be anything.
bool units_are_told(const parameter_table& table, std::span<const point_column> points) {
    const point_kinds kinds(table);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!points[i].unit.empty() && kinds.unit_of(i, points[i].label) != points[i].unit)
            return false;
    }
    return true;
}

/// True when the file has a unit for each point rather than one for all.
bool has_unit_by_point(const parameter_table& table) {
    const auto units = channel_entries(table, "POINT", "UNITS").all_texts();
    return std::adjacent_find(units.begin(), units.end(), std::not_equal_to<>()) != units.end();
}

void put_units_by_point(written_group& group, std::span<const point_column> points,
                        const parameter_table& table) {
    const point_kinds kinds(table);
    auto texts = texts_of_columns(points, &point_column::unit);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (texts[i].empty())
            texts[i] = kinds.unit_of(i, points[i].label);
    }
    put_texts(group, "UNITS", texts, unit_width);
}

void put_units(parameter_tree& tree, std::span<const point_column> points,
               schema::warnings& notes) {
    auto& group = tree.reach("POINT");
    if (!group.find("UNITS"))
        put_text(group, "UNITS", std::string(marker_kind.usual_unit), unit_width);
    if (units_are_told(tree.as_table(), points))
        return;
    if (has_unit_by_point(tree.as_table()))
        return put_units_by_point(group, points, tree.as_table());
    for (const auto* kind : schema::point_kinds_in_files) {
        const auto unit = unit_of(points, *kind, notes);
        if (!unit.empty())
            put_text(group, kind->unit_parameter, unit, unit_width);
    }
}

} // namespace

void put_points(parameter_tree& tree, std::span<const point_column> points,
                std::span<const std::string> labels_read, schema::warnings& notes) {
    if (points.size() > most_points) {
        throw export_error("there are {} points; a C3D file holds {}", points.size(), most_points);
    }
    put_count(tree.reach("POINT"), "USED", points.size(), new_lock::on);
    const auto rule = points.size() == labels_read.size() ? surplus::kept : surplus::dropped;
    put_entries(tree, {"POINT", "LABELS"}, texts_of_columns(points, &point_column::label),
                least_label_width, rule);
    put_entries(tree, {"POINT", "DESCRIPTIONS"},
                texts_of_columns(points, &point_column::description), 1, rule);
    put_kinds(tree, points, labels_read);
    put_units(tree, points, notes);
}

} // namespace c3d
