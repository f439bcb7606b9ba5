#include <memory>

#include <strata/plugin/plugin.hpp>

#include "plugins/data_modifier/split_set.hpp"
#include "schema/computations.hpp"

STRATA_PLUGIN(registry) {
    registry.add_unit(schema::computation::split_set,
                      std::make_unique<data_modifier::split_set_unit>());
}
