#include "schema/event_types.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace schema {

namespace {

constexpr std::string_view foot_strike = "Foot Strike";
constexpr std::string_view foot_off = "Foot Off";

constexpr std::array<std::string_view, 3> type_of_id{"General", foot_strike, foot_off};

/// A label that stands for a type.
struct label_synonym {
    std::string_view label;
    std::string_view type;
};
constexpr std::array<label_synonym, 8> synonyms{{
    {"Foot_Strike", foot_strike},
    {"FS", foot_strike},
    {"FootStrike", foot_strike},
    {"Foot Strike", foot_strike},
    {"Foot_Off", foot_off},
    {"FO", foot_off},
    {"FootOff", foot_off},
    {"Foot Off", foot_off},
}};

} // namespace

std::string event_type(int id, const std::string& label) {
    const auto number = static_cast<unsigned>(id);
    if (number < type_of_id.size())
        return std::string(type_of_id[number]);
    const auto found = std::ranges::find(synonyms, label, &label_synonym::label);
    return found == synonyms.end() ? label : std::string(found->type);
}

} // namespace schema
