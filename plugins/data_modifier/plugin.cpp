#include <memory>

#include <strata/plugin/plugin.hpp>

#include "plugins/data_modifier/split_set.hpp"

STRATA_PLUGIN(registry) {
    registry.add_unit("tarvex.data-modifier.split-set",
                      std::make_unique<data_modifier::split_set_unit>());
}
