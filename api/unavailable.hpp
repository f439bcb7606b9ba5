// What the functions do, by family.
//
// | file        |                                                              |
// |-------------|--------------------------------------------------------------|
// | channels/   | for points and analog channels: finding, numbering, matrices |
// | points/     | points                                                       |
// | analogs/    | analog channels                                              |
// | events/     | events                                                       |
// | devices/    | force platforms, wrenches, rotations                         |
// | metadata/   | metadata and ANALYSIS                                        |
// | unavailable | refusals                                                     |

#pragma once

#include "store/swig_error.hpp"

namespace mox {

/// Raised by functions that the interface names and this version does not offer.
[[noreturn]] inline void throw_not_supported() {
    throw_runtime_error("Function not supported yet. If you are actively using this function, "
                        "please contact support.");
}

/// Raised by functions that the store's way of keeping events leaves no room for.
[[noreturn]] inline void throw_not_implemented() {
    throw_runtime_error(
        "This function was not implemented because of a change in backend data storage. If you are "
        "actively using this function, please contact support.");
}

} // namespace mox
