#include <memory>

#include <strata/plugin/plugin.hpp>

#include "plugins/opensim/column_importer.hpp"
#include "plugins/opensim/marker_importer.hpp"

STRATA_PLUGIN(registry) {
    registry.add_importer("org.opensim.trc", std::make_unique<opensim::marker_importer>());
    registry.add_importer("org.opensim.sto", std::make_unique<opensim::column_importer>());
}
