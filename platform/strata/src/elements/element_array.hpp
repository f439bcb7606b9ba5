#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_type.hpp>
#include <strata/detail/element_box.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "platform/strata/src/elements/element_layout.hpp"

namespace strata::detail {

/// The elements of a data set or of an attribute with dimensions. Copies share rows of numbers
/// until one of them is written to. A type without an element kind has extents but nothing to read
/// or write.
class element_array {
  public:
    /// Zeros or empty texts. Throws std::bad_alloc.
    element_array(data_type type, const element_layout& layout);

    /// Numbers of the kind `type` that `rows` hold, be it more compactly. Requires that the rows
    /// are those of the layout.
    element_array(data_type type, const element_layout& layout,
                  std::vector<channel_buffer> rows) noexcept;

    /// Texts in row-major order; those behind the last one are empty. Requires no more than the
    /// layout, which has no axis, has elements.
    element_array(const element_layout& layout, std::vector<std::string> texts) noexcept;

    [[nodiscard]] data_type type() const noexcept { return type_; }
    [[nodiscard]] const element_layout& layout() const noexcept { return layout_; }
    [[nodiscard]] const dimensions& extents() const noexcept { return layout_.extents(); }
    /// One for each row of the layout; none unless the elements are numbers.
    [[nodiscard]] const std::vector<channel_buffer>& rows() const noexcept { return rows_; }

    /// Texts in row-major order, but for empty ones at the end.
    [[nodiscard]] const std::vector<std::string>& texts() const noexcept { return texts_; }

    /// Copies the elements of `box`, which lies within the extents, to `buffer`. False when there
    /// is no conversion. Throws std::bad_alloc, for texts only.
    [[nodiscard]] bool read(const element_box& box, void* buffer, data_type requested) const;

    /// Replaces the elements of `box`. False when there is no conversion. Throws std::bad_alloc;
    /// nothing has changed then.
    [[nodiscard]] bool write(const element_box& box, const void* buffer, data_type given);

    /// Adds `count` elements behind the last one, in amortised constant time for each: where there
    /// is no room, memory is taken for half as many again as there are. False when there is not
    /// exactly one dimension, or no conversion. Throws store_error for more elements than can be
    /// addressed, std::bad_alloc; nothing has changed then.
    [[nodiscard]] bool append(const void* buffer, std::uint64_t count, data_type given);

    /// Drops all but the first `count` elements. Requires one dimension with as many elements.
    void keep_first(std::uint64_t count) noexcept;

    /// These elements in another layout of the same type: elements keep their coordinates, or their
    /// order when the number of dimensions differs; what there was none for is zero or empty.
    /// Throws std::bad_alloc.
    [[nodiscard]] element_array resized(const element_layout& layout) const;

  private:
    void read_texts(const element_box& box, void* buffer) const;
    void write_texts(const element_box& box, const void* buffer);
    void make_writable(const element_box& box);
    void append_texts(const void* buffer, std::uint64_t count);
    void make_room(std::uint64_t count);

    data_type type_;
    element_layout layout_;
    std::vector<channel_buffer> rows_;
    std::uint64_t room_ = 0; // elements that the memory of the one row, once grown, has room for
    std::vector<std::string> texts_; // in row-major order; those behind the last one kept are empty
};

} // namespace strata::detail
