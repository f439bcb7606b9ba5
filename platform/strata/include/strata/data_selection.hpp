#pragma once

#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>
#include <strata/detail/counted.hpp>
#include <strata/detail/element_box.hpp>
#include <strata/export.hpp>

namespace strata {

namespace detail {
class set_content;
struct access;
} // namespace detail

/// A view of all or part of a data set's elements. It keeps the elements alive, and follows writes
/// and resizes of the set: once the set has become too small for it, it is invalid.
class STRATA_EXPORT data_selection {
  public:
    /// Denotes nothing.
    data_selection() noexcept;
    data_selection(const data_selection&) noexcept;
    data_selection(data_selection&&) noexcept;
    data_selection& operator=(const data_selection&) noexcept;
    data_selection& operator=(data_selection&&) noexcept;
    ~data_selection();

    /// False for a selection that failed or that denotes nothing.
    explicit operator bool() const noexcept;

    [[nodiscard]] data_shape shape() const;
    [[nodiscard]] data_type type() const noexcept;

    /// As data_attribute::read_value, in row-major order of the selection's shape.
    [[nodiscard]] bool read_value(void* buffer, data_type requested) const;

    /// As data_attribute::write_value. Other sets that share the elements' storage keep their
    /// values.
    [[nodiscard]] bool write_value(const void* buffer, data_type given);

  private:
    friend struct detail::access;
    detail::counted_ptr<detail::set_content> content_;
    detail::element_box box_;
};

} // namespace strata
