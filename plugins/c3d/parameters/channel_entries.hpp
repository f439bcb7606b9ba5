#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plugins/c3d/parameters/parameter_table.hpp"

namespace c3d {

/// What a list means that has no dimension for the channels: a single value.
enum class single_value { of_first_channel, of_all_channels };

/// The name of the list that a parameter is part of: "SCALE" for "SCALE2".
[[nodiscard]] inline std::string_view list_name(std::string_view parameter) noexcept {
    return parameter.substr(0, parameter.find_last_not_of("0123456789") + 1);
}

/// A parameter with an entry for each channel, such as ANALOG:SCALE. A parameter holds 255 entries
/// at most, so the list goes on in SCALE2, SCALE3 and so on, in step with LABELS, LABELS2, LABELS3.
class channel_entries {
  public:
    /// The list `name` of `group`; empty when there is none. Refers to the table's parameters.
    channel_entries(const parameter_table& parameters, std::string_view group,
                    std::string_view name, single_value single = single_value::of_first_channel);

    [[nodiscard]] bool empty() const noexcept { return parts_.empty(); }
    /// True when one value is for all channels, however many.
    [[nodiscard]] bool hold_for_all() const noexcept { return same_for_all_; }
    /// The number of channels that the list has entries for.
    [[nodiscard]] std::uint64_t count() const noexcept;

    /// The entry of a channel, counted from 0: as UTF-8 without padding, or as a number. Nothing
    /// where the list ends before.
    [[nodiscard]] std::optional<std::string> text(std::uint64_t channel) const;
    [[nodiscard]] std::optional<double> number(std::uint64_t channel) const noexcept;
    /// A word as it is stored, when the list holds 16-bit words.
    [[nodiscard]] std::optional<std::int16_t> word(std::uint64_t channel) const noexcept;

    /// All texts of the list, one part after the other.
    [[nodiscard]] std::vector<std::string> all_texts() const;

  private:
    struct part {
        const parameter* item;
        std::uint64_t first; // channel of its first entry
    };
    struct place {
        const parameter* item;
        std::uint64_t index;
    };
    [[nodiscard]] std::optional<place> find(std::uint64_t channel) const noexcept;

    std::vector<part> parts_;
    bool same_for_all_ = false;
};

} // namespace c3d
