#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "plugins/c3d/bytes/element_bytes.hpp"
#include "plugins/c3d/parameters/parameter.hpp"
#include "plugins/c3d/parameters/parameter_table.hpp"

namespace c3d {

/// A parameter as it is going to stand in a file.
struct written_parameter {
    std::string name;        ///< as it is spelled in the file
    std::string description; ///< as it is stored
    bool locked = false;
    element_type type = element_type::byte;
    std::vector<std::uint8_t> extents; ///< the fastest varying first; none: a single value
    byte_list data;                    ///< the elements

    /// Product of the extents.
    [[nodiscard]] std::size_t element_count() const noexcept;
};

/// A group as it is going to stand in a file.
struct written_group {
    std::string name;
    std::string description;
    std::uint8_t id = 0; ///< 1 to 127
    bool locked = false;
    std::vector<written_parameter> parameters;

    /// Whatever the case of the name; null when there is none.
    [[nodiscard]] written_parameter* find(std::string_view parameter) noexcept;
    /// The parameter of this name, made at the end when there is none.
    written_parameter& reach(std::string_view parameter);
    void remove(std::string_view parameter) noexcept;
};

/// All groups and parameters of a file that is going to be written. References to groups stay valid
/// until one is made.
class parameter_tree {
  public:
    [[nodiscard]] std::vector<written_group>& groups() noexcept { return groups_; }
    [[nodiscard]] const std::vector<written_group>& groups() const noexcept { return groups_; }

    /// Adds a group; one whose id is 0 or taken gets the lowest id that is free. Throws
    /// export_error when there is none.
    written_group& add(written_group group);

    /// Whatever the case of the name; null when there is none.
    [[nodiscard]] written_group* find(std::string_view group) noexcept;
    /// The group of this name, made at the end when there is none.
    written_group& reach(std::string_view group);

    /// What a reader of the file finds. Refers to the tree, which must neither change nor go while
    /// the table is used.
    [[nodiscard]] parameter_table as_table() const;

  private:
    std::vector<written_group> groups_;
};

} // namespace c3d
