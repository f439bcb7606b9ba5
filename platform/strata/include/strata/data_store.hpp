#pragma once

#include <strata/data_group.hpp>
#include <strata/export.hpp>

namespace strata {

/// One tree. Copies share it.
class STRATA_EXPORT data_store {
  public:
    /// An empty tree.
    data_store();
    data_store(const data_store&) noexcept;
    data_store& operator=(const data_store&) noexcept;
    /// A moved-from store may only be assigned to or destroyed.
    data_store(data_store&&) noexcept;
    data_store& operator=(data_store&&) noexcept;
    ~data_store();

    [[nodiscard]] data_group root() const;

  private:
    data_group root_;
};

} // namespace strata
