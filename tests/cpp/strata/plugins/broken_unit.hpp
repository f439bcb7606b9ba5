#pragma once

#include <strata/plugin/plugin.hpp>

/// An offer for plugins whose registration goes wrong.
class broken_unit final : public strata::callable_unit {
  public:
    [[nodiscard]] anvil::status evaluate(strata::data_group&, const anvil::json&) const override {
        return {};
    }
};
