#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <strata/data_group.hpp>

#include "schema/plate_frame.hpp"
#include "schema/table_shape.hpp"

namespace schema {

/// A square matrix, row by row.
struct square_matrix {
    std::size_t size = 0; ///< rows; 0 without a matrix
    std::vector<double> elements;

    [[nodiscard]] double at(std::size_t row, std::size_t column) const {
        return elements[row * size + column];
    }
};

/// One platform as the parameters describe it. What they lack, or hold as something else than
/// numbers, is absent.
struct force_platform {
    std::int64_t type = 0; ///< 0 when it is missing or no whole number
    /// Numbers of analog columns, counted from 1, in the order of the type; 0 for one that is not
    /// used. As many as a platform of that type has, fewer when the table is narrower; for types
    /// with an unknown number of channels all that are not 0.
    std::vector<std::int64_t> channels;
    std::optional<plate_corners> corners;
    std::optional<vector3> origin;  ///< as stored
    square_matrix calibration;      ///< the part for the platform's channels
    std::vector<double> polynomial; ///< 12 coefficients, or none
};

/// Channels of a platform of a type; 0 for types that nobody has described.
[[nodiscard]] constexpr std::size_t channels_of_type(std::int64_t type) noexcept {
    if (type == 3)
        return 8;
    return type == 1 || type == 2 || type == 4 ? 6 : 0;
}

/// The parameters of the force platforms of an acquisition, read once; empty without them. There
/// are as many platforms as USED says, no more than TYPE has entries; without a whole number in
/// USED as many as TYPE has, without TYPE no more than the longest of the other tables has. Tables
/// whose dimensions were flattened are understood; one whose dimensions are the other way round
/// counts as missing.
class force_platform_table {
  public:
    explicit force_platform_table(const strata::data_group& root);

    [[nodiscard]] std::size_t count() const noexcept { return count_; }
    /// Requires: index < count().
    [[nodiscard]] force_platform platform(std::size_t index) const;

    /// The parameters that hold something else than numbers.
    [[nodiscard]] const std::vector<std::string>& unreadable() const noexcept {
        return unreadable_;
    }
    /// A sentence for each parameter whose dimensions cannot be those of its numbers.
    [[nodiscard]] const std::vector<std::string>& misshapen() const noexcept { return misshapen_; }

  private:
    /// The numbers of one parameter, those of a platform behind those of the one before.
    struct numbers {
        std::vector<double> values;
        std::vector<std::int64_t> extents;
        std::size_t width = 0; ///< of each platform; at least 1 where it is used

        /// The numbers of one platform, none when it has not all of them.
        [[nodiscard]] std::span<const double> entry(std::size_t index) const;
    };

    [[nodiscard]] numbers read(const strata::data_group& group, const char* name);
    [[nodiscard]] numbers read_blocks(const strata::data_group& group, const char* name,
                                      const std::vector<std::int64_t>& inner);
    void read_polynomials(const strata::data_group& group);
    void read_channels(const strata::data_group& group);
    void read_matrices(const strata::data_group& group);
    void count_platforms(const strata::data_group& group);
    void drop(numbers& table, const char* name);
    [[nodiscard]] std::size_t width_of_flattened_channels() const;
    [[nodiscard]] std::vector<std::int64_t> channels_of(std::size_t index, std::int64_t type) const;
    [[nodiscard]] square_matrix matrix_of(std::size_t index, std::int64_t type) const;

    numbers types_;
    numbers corners_;
    numbers origins_;
    numbers channels_;
    numbers matrices_;
    numbers polynomials_;
    matrix_extent matrix_extent_{};
    std::size_t count_ = 0;
    std::vector<std::string> unreadable_;
    std::vector<std::string> misshapen_;
};

} // namespace schema
