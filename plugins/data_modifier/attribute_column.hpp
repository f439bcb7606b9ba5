#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_attribute.hpp>
#include <strata/data_set.hpp>
#include <strata/data_type.hpp>

namespace data_modifier {

/// One value for each channel, which becomes an attribute of the channel's set. Attributes that a
/// channel set is known by have a type and an initial value of their own; any other takes the type
/// of the values, and its initial value is zero or empty.
class attribute_column {
  public:
    /// `values`: an array attribute with an element for each channel; may denote nothing, be too
    /// short, or unfit, of which the last is a line in the log.
    attribute_column(std::string name, const strata::data_attribute& values);

    [[nodiscard]] const std::string& name() const noexcept { return name_; }

    /// Creates the attribute with the channel's value, or with the initial value where there is
    /// none. Creates nothing when neither is known.
    void create_on(strata::data_set& set, std::uint64_t channel) const;

  private:
    void read(const strata::data_attribute& values);

    std::string name_;
    strata::data_type type_;
    std::vector<std::string> texts_; // of the channels, if the values are texts
    std::vector<std::byte> numbers_; // of the channels, if they are numbers
    std::string initial_text_;
    double initial_number_ = 0.0;
};

} // namespace data_modifier
