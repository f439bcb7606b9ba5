// Header and parameters: of a file, in the data store, and of a file that is written.
//
// | file                |                                                               |
// |---------------------|---------------------------------------------------------------|
// | parameter           | one parameter of a file: type, dimensions, elements           |
// | header              | the header block and its events                               |
// | header_attribute    | an attribute of the header group                              |
// | parameter_record    | a record of a section as it describes itself                  |
// | read_section        | the records of a section, however odd their chain is          |
// | parameter_table     | the parameters of a file, bound to groups and found by name   |
// | channel_entries     | a list with an entry for each channel: NAME, NAME2, NAME3 …   |
// | c3d_file            | all of a file before its samples; whether it is one at all    |
// | metadata_names      | what groups and parameters are called below `Format/Metadata` |
// | read_metadata       | parameters become the attributes of `Format/Metadata`         |
// | kept_records        | what those do not say is kept for writing, and found again    |
// | parameter_tree      | groups and parameters of a file that is going to be written   |
// | parameter_values    | numbers and texts become the elements of such a parameter     |
// | stored_attribute    | an attribute of the metadata becomes one                      |
// | write_metadata      | all of `Format/Metadata` becomes a tree                       |
// | put_parameter       | a parameter gets a value, or stays where it says that already |
// | put_entries         | the same of a list with an entry for each channel             |
// | standard_parameters | what every file should have, for one that was never read      |
// | set_attributes      | label, unit and index of a set that is written                |
// | written_form        | the processor and the storage that a file is written for      |
// | write_section       | the tree as the bytes of a section                            |

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "plugins/c3d/bytes/number_format.hpp"

namespace c3d {

/// What a parameter holds; the values are those of the file.
enum class element_type : std::int8_t {
    character = -1,
    byte = 1,
    integer = 2, ///< 16 bits
    real = 4,
};

/// The type that a type byte stands for.
[[nodiscard]] std::optional<element_type> element_type_of(std::int8_t code) noexcept;

/// Bytes of one element.
[[nodiscard]] std::size_t bytes_of(element_type type) noexcept;

/// Extents of a parameter, the fastest varying first. None: a single value.
class parameter_dimensions {
  public:
    static constexpr std::size_t most = 7;

    parameter_dimensions() noexcept = default;
    /// Requires: at most `most` bytes.
    explicit parameter_dimensions(std::span<const std::byte> bytes) noexcept;

    [[nodiscard]] std::size_t count() const noexcept { return count_; }
    [[nodiscard]] std::uint8_t operator[](std::size_t index) const noexcept {
        return extents_[index];
    }

    /// Product of the extents from `first` on; 1 where there are none. Fits: 255 to the seventh is
    /// below 2^56.
    [[nodiscard]] std::uint64_t product(std::size_t first = 0) const noexcept;

    /// Makes the last extent smaller. Requires: there is one.
    void shorten_last(std::uint8_t extent) noexcept { extents_[count_ - 1] = extent; }

  private:
    std::array<std::uint8_t, most> extents_{};
    std::uint8_t count_ = 0;
};

/// One parameter. It refers to the bytes of its section, which must outlive it.
struct parameter {
    std::uint64_t offset = 0;     ///< of its record in the file
    std::string_view name;        ///< as stored
    std::string_view description; ///< as stored
    std::uint8_t group_id = 0;    ///< 1 to 127
    bool locked = false;
    element_type type = element_type::byte;
    number_format format = number_format::intel;
    parameter_dimensions dimensions;
    std::uint64_t data_offset = 0;   ///< of the elements in the file
    std::span<const std::byte> data; ///< the elements: as many bytes as the dimensions say

    /// Elements of a number, characters of a text.
    [[nodiscard]] std::uint64_t element_count() const noexcept { return dimensions.product(); }

    /// A text parameter holds texts of a fixed width, its first extent; without extents, one
    /// character.
    [[nodiscard]] std::size_t text_width() const noexcept;
    [[nodiscard]] std::uint64_t text_count() const noexcept { return dimensions.product(1); }
    /// Text `index` without padding, as stored. Requires: a text parameter, index < text_count().
    [[nodiscard]] std::string_view text(std::uint64_t index) const noexcept;

    /// Element `index` as a number: integers with their sign, bytes without. Nothing for text and
    /// beyond the end.
    [[nodiscard]] std::optional<double> number(std::uint64_t index) const noexcept;

    /// Element `index` as a count: words without sign; reals rounded. Nothing for text, beyond the
    /// end, for negative and infinite reals and NaN.
    [[nodiscard]] std::optional<std::uint64_t> count(std::uint64_t index) const noexcept;
};

/// Bytes of the elements that `dimensions` announce. Where they are more than `available`, the last
/// dimension is shortened to the entries that are there whole; nothing when there is no dimension
/// to shorten.
[[nodiscard]] std::optional<std::size_t> fit(parameter_dimensions& dimensions, element_type type,
                                             std::uint64_t available) noexcept;

} // namespace c3d
