#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <strata/data_attribute.hpp>
#include <strata/data_selection.hpp>
#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>
#include <strata/detail/counted.hpp>
#include <strata/export.hpp>

namespace strata {

namespace detail {
class set_entry;
struct access;
} // namespace detail

/// A handle on a named, typed, shaped array of elements with attributes of its own. Copies denote
/// the same set.
class STRATA_EXPORT data_set {
  public:
    /// Denotes nothing.
    data_set() noexcept;
    data_set(const data_set&) noexcept;
    data_set(data_set&&) noexcept;
    data_set& operator=(const data_set&) noexcept;
    data_set& operator=(data_set&&) noexcept;
    ~data_set();

    /// False for a handle that denotes no set. Every other member requires a set.
    explicit operator bool() const noexcept;

    /// The last component of the path that the set was reached by.
    [[nodiscard]] std::string name() const;
    [[nodiscard]] data_type type() const noexcept;
    /// The flag is kept for the interface and has no effect in this store.
    [[nodiscard]] data_shape shape(bool flag) const;

    /// The whole set when `shape` is the set's own shape; otherwise an invalid selection.
    [[nodiscard]] data_selection select(const data_shape& shape, bool flag) const;

    /// A box of the set: an (offset, extent) pair for each dimension, slowest first, so `count` is
    /// twice the number of dimensions. For a channel set: components, channels, samples. Invalid
    /// when it leaves the set.
    [[nodiscard]] data_selection select(const std::uint64_t* coordinates, std::uint64_t count,
                                        bool flag) const;

    /// Changes the extent, keeping the element type and every element whose coordinates lie in both
    /// extents; new elements are zero (empty texts). `count` may differ from the number of
    /// dimensions held: elements are then kept in order. Throws store_error for an extent that
    /// cannot be, std::bad_alloc when memory is short; nothing has changed then.
    void resize(const std::uint64_t* dimensions, std::uint64_t count);

    [[nodiscard]] bool exists_attribute(std::string_view name) const noexcept;
    /// Denotes nothing when there is no such attribute.
    [[nodiscard]] data_attribute retrieve_attribute(std::string_view name) const;
    /// Throws store_error when the attribute exists. Numbers start as zero, texts as empty.
    data_attribute create_attribute(std::string_view name, const data_shape& shape, data_type type);
    /// Adds a copy (name, type, shape, value); replaces an attribute of that name.
    void copy_attribute(const data_attribute& attribute);
    void delete_attribute(std::string_view name);
    /// In order of creation.
    [[nodiscard]] std::vector<std::string> list_attributes_name() const;

  private:
    friend struct detail::access;
    detail::counted_ptr<detail::set_entry> entry_;
};

} // namespace strata
