#include <memory>

#include <strata/plugin/plugin.hpp>

#include "plugins/classical_mechanics/ground_reaction_wrench.hpp"

STRATA_PLUGIN(registry) {
    using classical_mechanics::ground_reaction_wrench;
    registry.add_unit(ground_reaction_wrench::id, std::make_unique<ground_reaction_wrench>());
}
