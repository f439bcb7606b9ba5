#pragma once

#include <stdexcept>

namespace data_modifier {

/// Why a set cannot be split. Stays inside the plugin, which hands the text over as a status.
class split_error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace data_modifier
