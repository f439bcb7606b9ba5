#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "plugins/c3d/parameters/read_section.hpp"

namespace c3d {

/// One group of a file with the parameters bound to it, in file order.
struct parameter_group {
    std::string name; ///< UTF-8, as spelled in the file; "GROUP_<id>" for one that has no record
    std::string description; ///< UTF-8
    std::uint8_t id = 0;     ///< 1 to 127
    bool locked = false;
    bool has_record = true;
    /// Index of the first group of this name; its own for all but repeated names.
    std::size_t first_of_name = 0;
    std::vector<std::size_t> parameters; ///< indices of parameter_table::parameters()
};

/// The parameters of a file, bound to their groups. Names are found whatever their case. Groups
/// that share a name are one for every look-up, and of parameters that share a name the last one
/// counts.
///
/// Refers to the bytes of the section.
class parameter_table {
  public:
    parameter_table() = default;
    /// Repeated names and ids, and groups without a record, are noted.
    parameter_table(section_records records, schema::warnings& notes);

    [[nodiscard]] const std::vector<parameter_group>& groups() const noexcept { return groups_; }
    [[nodiscard]] const std::vector<parameter>& parameters() const noexcept { return parameters_; }

    [[nodiscard]] bool has_group(std::string_view group) const noexcept;

    /// Null when there is none.
    [[nodiscard]] const parameter* find(std::string_view group,
                                        std::string_view name) const noexcept;

    /// First element of a numeric parameter of any type; nothing when it is missing, empty or a
    /// text.
    [[nodiscard]] std::optional<double> number(std::string_view group,
                                               std::string_view name) const noexcept;
    /// The same as a count (see parameter::count).
    [[nodiscard]] std::optional<std::uint64_t> count(std::string_view group,
                                                     std::string_view name) const noexcept;
    /// First text, UTF-8; empty when there is none.
    [[nodiscard]] std::string text(std::string_view group, std::string_view name) const;

    /// The parameter and those that go on behind its 255 entries: NAME, NAME2, NAME3 and so on,
    /// until one is missing.
    [[nodiscard]] std::vector<const parameter*> parts(std::string_view group,
                                                      std::string_view name) const;

  private:
    void bind_groups(const std::vector<group_record>& records);
    void bind_parameters(const std::vector<group_record>& records, schema::warnings& notes);
    void note_repetitions(schema::warnings& notes) const;
    std::size_t group_without_record(std::uint8_t id, schema::warnings& notes);
    void merge_by_name(std::size_t group);

    std::vector<parameter_group> groups_;
    std::vector<parameter> parameters_;
    std::unordered_map<std::string, std::size_t> by_name_; // upper case -> first group of the name
    // By first group: parameters of all groups of the name.
    std::vector<std::vector<std::size_t>> merged_;
};

/// ASCII letters in upper case.
[[nodiscard]] std::string upper_case(std::string_view text);

/// Equal but for the case of ASCII letters.
[[nodiscard]] bool same_name(std::string_view left, std::string_view right) noexcept;

} // namespace c3d
