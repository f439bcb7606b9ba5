#include <strata/plugin/plugin.hpp>

// A library like any other.
extern "C" STRATA_PLUGIN_EXPORT int answer() { return 42; }
