#pragma once

#include <string>
#include <string_view>
#include <utility>

#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>
#include <strata/detail/counted.hpp>

#include "platform/strata/src/elements/element_array.hpp"
#include "platform/strata/src/tree/attribute_list.hpp"

namespace strata::detail {

/// What a data set is but for its name: elements and attributes.
class set_content final : public counted {
  public:
    /// Zeros or empty texts. Throws store_error for an impossible shape, std::bad_alloc.
    set_content(const data_shape& shape, data_type type);
    explicit set_content(element_array elements) noexcept
        : type_(elements.type()), elements_(std::move(elements)) {}
    /// `type` is the one that it was created with, of the elements' kind.
    set_content(element_array elements, data_type type) noexcept
        : type_(type), elements_(std::move(elements)) {}

    [[nodiscard]] data_type type() const noexcept { return type_; }
    [[nodiscard]] const element_array& elements() const noexcept { return elements_; }
    [[nodiscard]] element_array& elements() noexcept { return elements_; }
    [[nodiscard]] const attribute_list& attributes() const noexcept { return attributes_; }
    [[nodiscard]] attribute_list& attributes() noexcept { return attributes_; }

    /// A copy, which shares rows of numbers until either is written to. Throws std::bad_alloc.
    [[nodiscard]] counted_ptr<set_content> copy() const;
    /// Gives each of both what the other one has.
    void exchange(set_content& other) noexcept;

    /// The contract is that of data_set::resize.
    void resize(const dimensions& extents);

  private:
    data_type type_; // as given at creation, be it above 100
    element_array elements_;
    attribute_list attributes_;
};

/// A name that a group knows a data set by. A hard link is a second entry with the same content.
class set_entry final : public counted {
  public:
    set_entry(std::string_view name, counted_ptr<set_content> content)
        : name_(name), content_(std::move(content)) {}

    [[nodiscard]] std::string_view name() const noexcept { return name_; }
    [[nodiscard]] const counted_ptr<set_content>& content() const noexcept { return content_; }

  private:
    std::string name_;
    counted_ptr<set_content> content_;
};

} // namespace strata::detail
