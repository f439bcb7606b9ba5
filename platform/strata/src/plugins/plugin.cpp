#include <strata/plugin/plugin.hpp>

namespace strata {

importer::~importer() = default;
exporter::~exporter() = default;
callable_unit::~callable_unit() = default;
plugin_registry::~plugin_registry() = default;

} // namespace strata
