#pragma once

#include <anvil/json.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/export.hpp>

namespace strata {

/// Runs callable units of the plugins.
class STRATA_EXPORT callable_builder {
  public:
    callable_builder();
    ~callable_builder(); // NOLINT(performance-trivially-destructible): room for members later

    /// Runs the unit that the member "callable_unit" of `parameters` names on `target`. Fails when
    /// that member is missing, when no such unit is registered, when the unit fails or throws.
    [[nodiscard]] anvil::status evaluate(data_group& target, const anvil::json& parameters);
};

} // namespace strata
