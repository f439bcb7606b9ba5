#include "plugins/c3d/points/point_columns.hpp"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

#include "plugins/c3d/parameters/set_attributes.hpp"
#include "schema/file_text.hpp"
#include "schema/name_pool.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

using schema::point_kind;

struct indexed_point {
    std::int64_t index = 0;
    point_column column;
};

std::vector<indexed_point> listed_points(const strata::data_group& data) {
    std::vector<indexed_point> points;
    for (const auto& kind : schema::point_kind_table) {
        if (!data.exists_group(kind.group_name))
            continue;
        const auto group = data.retrieve_group(kind.group_name);
        for (const auto& name : group.list_set_children_name()) {
            point_column column;
            column.set = group.retrieve_set(name);
            column.kind = &kind;
            column.listed = points.size();
            column.label = label_of(column.set);
            column.unit = known_unit_of(column.set);
            column.description = text_of(column.set, attribute::description);
            points.push_back({relative_index_of(column.set), std::move(column)});
        }
    }
    return points;
}

/// Labels that are taken, and by which kind of points.
class label_kinds {
  public:
    explicit label_kinds(const std::vector<indexed_point>& points) {
        for (const auto& point : points)
            all_.take(point.column.label);
    }

    /// True when the label means points of this kind from now on.
    bool claim(const std::string& label, const point_kind* kind) {
        return kinds_.emplace(label, kind).first->second == kind;
    }

    /// A label that no point has.
    std::string distinct(const std::string& label) { return all_.take_numbered(label); }

  private:
    schema::name_pool all_;
    std::unordered_map<std::string, const point_kind*> kinds_;
};

void make_labels_tell_kinds(std::vector<indexed_point>& points, schema::warnings& notes) {
    label_kinds labels(points);
    // What already has the name of its label keeps it.
    for (const auto& [index, column] : points) {
        if (!column.label.empty() && column.label == column.set.name())
            labels.claim(column.label, column.kind);
    }
    for (auto& [index, column] : points) {
        if (column.label.empty() && column.kind != &schema::marker_kind) {
            column.label = column.set.name();
            notes.add("a point of the kind '{}' has no label; it is written as '{}'",
                      column.kind->word, column.label);
        }
        if (column.label.empty() || labels.claim(column.label, column.kind))
            continue;
        auto label = labels.distinct(column.label);
        notes.add("points of different kinds have the label '{}'; that of the kind '{}' is written "
                  "as '{}'",
                  column.label, column.kind->word, label);
        column.label = std::move(label);
        labels.claim(column.label, column.kind);
    }
}

} // namespace

std::vector<point_column> point_columns(const strata::data_group& data, schema::warnings& notes) {
    auto points = listed_points(data);
    make_labels_tell_kinds(points, notes);
    std::stable_sort(points.begin(), points.end(),
                     [](const auto& left, const auto& right) { return left.index < right.index; });
    std::vector<point_column> columns;
    columns.reserve(points.size());
    for (auto& point : points)
        columns.push_back(std::move(point.column));
    return columns;
}

point_time_base time_base_of(const strata::data_group& data) {
    for (const auto* kind : schema::point_kinds_in_files) {
        if (!data.exists_group(kind->group_name))
            continue;
        const auto group = data.retrieve_group(kind->group_name);
        const auto number = [&](const char* name) {
            return schema::read_number<double>(group.retrieve_attribute(name)).value_or(0.0);
        };
        const auto frames =
            schema::read_number<std::uint64_t>(group.retrieve_attribute(attribute::num_samples))
                .value_or(0);
        return {frames, number(attribute::sample_rate), number(attribute::start_time)};
    }
    return {};
}

} // namespace c3d
