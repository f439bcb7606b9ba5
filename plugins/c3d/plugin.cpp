#include <memory>

#include <strata/plugin/plugin.hpp>

#include "plugins/c3d/export/exporter.hpp"
#include "plugins/c3d/import/importer.hpp"
#include "plugins/c3d/units/detect_rotations.hpp"
#include "plugins/c3d/units/events_detect.hpp"
#include "plugins/c3d/units/forceplate_detect.hpp"

STRATA_PLUGIN(registry) {
    registry.add_importer("org.c3d.c3d", std::make_unique<c3d::importer>());
    registry.add_exporter("org.c3d.c3d", std::make_unique<c3d::exporter>());
    registry.add_unit(c3d::detect_rotations::id, std::make_unique<c3d::detect_rotations>());
    registry.add_unit(c3d::events_detect::id, std::make_unique<c3d::events_detect>());
    registry.add_unit(c3d::forceplate_detect::id, std::make_unique<c3d::forceplate_detect>());
}
