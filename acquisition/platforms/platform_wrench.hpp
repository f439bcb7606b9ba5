#pragma once

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

#include "acquisition/platforms/force_platforms.hpp"

namespace mox {

/// In the unit of the force channels. Low for a person, high for the noise of a platform.
inline constexpr double default_fz_threshold = 10.0;

/// Where the moment of a wrench is taken.
enum class wrench_place { hardware_origin, point_of_application };

/// Whose axes a wrench is given in. Points in the platform's axes begin at the centre of its
/// surface.
enum class wrench_axes { laboratory, platform };

/// Which wrench of a platform is meant.
struct wrench_request {
    wrench_place place = wrench_place::hardware_origin;
    wrench_axes axes = wrench_axes::laboratory;
    double fz_threshold = default_fz_threshold; ///< least absolute Fz that has a point of
                                                ///< application, not negative
};

/// The wrench of a platform, from its channels as they are: a set {9, 1, samples} of F, M and P,
/// which nothing but the handle holds. The handle denotes nothing when there is no wrench; what
/// could not be computed is a line in the log. Throws std::bad_alloc when memory is short.
[[nodiscard]] strata::data_set compute_wrench(strata::data_group root,
                                              const platform_state& platform,
                                              const wrench_request& request);

} // namespace mox
