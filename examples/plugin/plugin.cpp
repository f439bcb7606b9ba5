#include <memory>

#include <strata/plugin/plugin.hpp>

#include "examples/plugin/table_importer.hpp"

// The whole conversation with the program: it calls this once, right after it has loaded the file.
STRATA_PLUGIN(registry) {
    registry.add_importer("org.example.table", std::make_unique<example::table_importer>());
}
