#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/data_type.hpp>
#include <strata/export.hpp>

namespace strata {

namespace detail {
struct buffer_access;
} // namespace detail

/// The elements of one channel, or of one row of an array attribute, as they are held in memory.
///
/// Copies share the elements. A set that is written to, resized or appended to first takes elements
/// of its own, so sharing never shows. Elements may be held more compactly than the set's element
/// type: `float32` or `int16` elements of a `float64` set whose value is (element − offset) ×
/// factor, computed in double precision.
class STRATA_EXPORT channel_buffer {
  public:
    /// `channels` buffers of `elements` elements each, held as `stored` (any type but `string`),
    /// not initialised. They lie in one block of memory, which is freed with the last of them.
    /// Throws std::bad_alloc.
    [[nodiscard]] static std::vector<channel_buffer>
    allocate(data_type stored, std::uint64_t elements, std::size_t channels);

    /// The elements, to be filled before the buffer is given to a set.
    [[nodiscard]] std::byte* data() const noexcept { return elements_.get(); }
    [[nodiscard]] data_type stored() const noexcept { return stored_; }
    [[nodiscard]] std::uint64_t count() const noexcept { return count_; }

    /// What turns an element into its value; 0 and 1 (the element as it is) until set.
    void set_scaling(double offset, double factor) noexcept;
    [[nodiscard]] double offset() const noexcept { return offset_; }
    [[nodiscard]] double factor() const noexcept { return factor_; }

  private:
    friend struct detail::buffer_access;
    std::shared_ptr<std::byte> elements_;
    std::uint64_t count_ = 0;
    double offset_ = 0.0;
    double factor_ = 1.0;
    data_type stored_ = data_type::invalid;
};

/// Creates the `float64` set `name` of shape {components, channels.size(), samples} in `group`;
/// each buffer holds one channel, component by component (components × samples elements). Throws
/// store_error when the name is taken or a buffer has another size.
STRATA_EXPORT data_set create_channel_set(data_group group, std::string_view name,
                                          std::uint64_t components, std::uint64_t samples,
                                          std::vector<channel_buffer> channels);

/// The buffer of one channel of a three-dimensional set, shared.
[[nodiscard]] STRATA_EXPORT channel_buffer share_channel(const data_set& set,
                                                         std::uint64_t channel);

/// Creates the attribute `name` of shape {rows.size(), elements} on `set`, element type that of the
/// buffers, each buffer a row. An attribute of one row is created with share_row's result and has
/// the shape {elements}. Throws store_error when the name is taken, when there is no row, when rows
/// differ in type or size, and when they are scaled.
STRATA_EXPORT data_attribute create_row_attribute(data_set set, std::string_view name,
                                                  std::vector<channel_buffer> rows);
STRATA_EXPORT data_attribute create_row_attribute(data_set set, std::string_view name,
                                                  channel_buffer row);

/// The buffer of a one-dimensional numeric attribute, shared. Throws store_error for any other.
[[nodiscard]] STRATA_EXPORT channel_buffer share_elements(const data_attribute& attribute);

/// The buffer of one row of a two-dimensional attribute made by create_row_attribute, shared; a
/// copy for any other two-dimensional numeric attribute.
[[nodiscard]] STRATA_EXPORT channel_buffer share_row(const data_attribute& attribute,
                                                     std::uint64_t row);

} // namespace strata
