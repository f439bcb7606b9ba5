#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>
#include <strata/detail/counted.hpp>

#include "platform/strata/src/elements/element_array.hpp"
#include "platform/strata/src/tree/key_watch.hpp"

namespace strata::detail {

/// An attribute. A single value lies in the node itself, so that reading one follows no further
/// pointer.
class attribute_node final : public counted {
  public:
    /// Zeros or empty texts. Throws store_error for an impossible shape, std::bad_alloc.
    attribute_node(std::string_view name, const data_shape& shape, data_type type);
    attribute_node(std::string_view name, element_array elements);
    /// `type` is the one that it was created with, of the elements' kind.
    attribute_node(std::string_view name, element_array elements, data_type type);

    /// A copy of this node, which shares rows of numbers until either is written to.
    [[nodiscard]] counted_ptr<attribute_node> copy() const;

    [[nodiscard]] std::string_view name() const noexcept { return name_; }
    [[nodiscard]] data_type type() const noexcept { return type_; }
    [[nodiscard]] data_shape shape() const;

    /// The contracts are those of data_attribute.
    [[nodiscard]] bool read(void* buffer, data_type requested) const;
    [[nodiscard]] bool write(const void* buffer, data_type given);

    /// Tells `watch`, in the place of another one, whenever the value was written.
    void watch(counted_ptr<key_watch> watch) noexcept { watch_ = std::move(watch); }

    /// The text of a single text; empty for any other attribute.
    [[nodiscard]] std::string_view text() const noexcept { return text_; }

    /// The elements of an attribute with dimensions; null for a single value.
    [[nodiscard]] const element_array* elements() const noexcept { return elements_.get(); }
    [[nodiscard]] element_array* elements() noexcept { return elements_.get(); }

  private:
    [[nodiscard]] bool write_value(const void* buffer, data_type given);

    std::string name_;
    data_type type_;                                 // as given at creation, be it above 100
    std::array<std::byte, sizeof(double)> number_{}; // of a single number
    std::string text_;                               // of a single text
    std::unique_ptr<element_array> elements_;        // of everything else
    counted_ptr<key_watch> watch_;
};

} // namespace strata::detail
