#include <memory>

#include <strata/plugin/plugin.hpp>

#include "plugins/c3d/events/events_detect.hpp"
#include "plugins/c3d/exporter.hpp"
#include "plugins/c3d/importer.hpp"
#include "plugins/c3d/platforms/forceplate_detect.hpp"
#include "plugins/c3d/rotations/detect_rotations.hpp"

STRATA_PLUGIN(registry) {
    registry.add_importer("org.c3d.c3d", std::make_unique<c3d::importer>());
    registry.add_exporter("org.c3d.c3d", std::make_unique<c3d::exporter>());
    registry.add_unit(c3d::detect_rotations::id, std::make_unique<c3d::detect_rotations>());
    registry.add_unit(c3d::events_detect::id, std::make_unique<c3d::events_detect>());
    registry.add_unit(c3d::forceplate_detect::id, std::make_unique<c3d::forceplate_detect>());
}
