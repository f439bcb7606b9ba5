#pragma once

#include <string>

#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>
#include <strata/detail/counted.hpp>
#include <strata/export.hpp>

namespace strata {

namespace detail {
class attribute_node;
class attribute_list;
struct access;
} // namespace detail

/// A handle on a named, typed, shaped value of a group or a data set. Copies denote the same value;
/// it stays readable through a handle after it was deleted from its owner.
class STRATA_EXPORT data_attribute {
  public:
    /// Denotes nothing.
    data_attribute() noexcept;
    data_attribute(const data_attribute&) noexcept;
    data_attribute(data_attribute&&) noexcept;
    data_attribute& operator=(const data_attribute&) noexcept;
    data_attribute& operator=(data_attribute&&) noexcept;
    ~data_attribute();

    /// False for a handle that denotes nothing.
    explicit operator bool() const noexcept;

    [[nodiscard]] std::string name() const;
    [[nodiscard]] data_shape shape() const;
    [[nodiscard]] data_type type() const noexcept;

    /// Copies all elements into `buffer`, converted to `requested`, in row-major order of the
    /// shape. Numbers convert as convert_number says; between text and numbers there is no
    /// conversion. For `string`, `buffer` is an array of `const char*` whose texts are the caller's
    /// until it passes the buffer to data_converter_string_clean_buffer. False when nothing could
    /// be read; `buffer` is then unchanged.
    [[nodiscard]] bool read_value(void* buffer, data_type requested) const;

    /// Replaces all elements by those of `buffer`, converted from `given` to the stored type; for
    /// `string` an array of `const char*` (a null pointer counts as empty text). False when there
    /// is no conversion; nothing is changed then.
    [[nodiscard]] bool write_value(const void* buffer, data_type given);

    /// Replaces the value of a scalar string attribute; any other attribute is left alone.
    void write(const char* text);

  private:
    friend struct detail::access;
    detail::counted_ptr<detail::attribute_node> node_;
};

} // namespace strata
