#include "plugins/c3d/points/point_kinds.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "plugins/c3d/parameters/channel_entries.hpp"

namespace c3d {

namespace {

std::string first_or(const std::vector<std::string>& texts, std::string_view usual) {
    const auto found =
        std::find_if(texts.begin(), texts.end(), [](const auto& text) { return !text.empty(); });
    return found == texts.end() ? std::string(usual) : *found;
}

bool all_equal(const std::vector<std::string>& texts) {
    return std::all_of(texts.begin(), texts.end(),
                       [&](const auto& text) { return text == texts.front(); });
}

} // namespace

point_kinds::point_kinds(const parameter_table& parameters) {
    for (const auto& kind : schema::point_kind_table) {
        auto units = channel_entries(parameters, "POINT", kind.unit_parameter).all_texts();
        unit_by_kind_.emplace(&kind, first_or(units, kind.usual_unit));
        // Some writers store a unit for each point; where they are all equal, it is that of
        // markers.
        if (&kind == &schema::marker_kind) {
            if (units.size() > 1 && !all_equal(units))
                unit_by_point_ = std::move(units);
            continue;
        }
        for (auto& label : channel_entries(parameters, "POINT", kind.list_parameter).all_texts()) {
            if (!label.empty())
                kind_by_label_.emplace(std::move(label), &kind);
        }
    }
}

const schema::point_kind& point_kinds::kind_of(const std::string& label) const {
    const auto found = kind_by_label_.find(label);
    return found == kind_by_label_.end() ? schema::marker_kind : *found->second;
}

std::string_view point_kinds::type_of(const std::string& label) const {
    return kind_of(label).word;
}

const std::string& point_kinds::unit_of(std::uint64_t point, const std::string& label) const {
    const auto index = static_cast<std::size_t>(point);
    // A unit for every point says more than one for its kind.
    if (index < unit_by_point_.size() && !unit_by_point_[index].empty())
        return unit_by_point_[index];
    return unit_by_kind_.at(&kind_of(label));
}

} // namespace c3d
