#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "plugins/c3d/parameters/parameter_table.hpp"
#include "schema/point_kind_table.hpp"

namespace c3d {

/// What the points of a file are: markers, or what a model computed and stored like markers.
class point_kinds {
  public:
    explicit point_kinds(const parameter_table& parameters);

    /// What a point with this label is: what the file lists it as, else a marker.
    [[nodiscard]] const schema::point_kind& kind_of(const std::string& label) const;

    /// "angle", "force", "moment" or "power" for a label that the file lists as one, else "marker".
    [[nodiscard]] std::string_view type_of(const std::string& label) const;

    /// The unit of a point: that of its kind, or that of the points where markers are concerned;
    /// without either the usual one.
    [[nodiscard]] const std::string& unit_of(std::uint64_t point, const std::string& label) const;

  private:
    std::unordered_map<std::string, const schema::point_kind*> kind_by_label_;
    std::unordered_map<const schema::point_kind*, std::string> unit_by_kind_;
    std::vector<std::string> unit_by_point_; // where the file has one for each; else empty
};

} // namespace c3d
