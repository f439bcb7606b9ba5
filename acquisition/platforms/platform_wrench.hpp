#pragma once

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

#include "acquisition/platforms/force_platforms.hpp"

namespace mox {

/// In the unit of the force channels. Low for a person, high for the noise of a platform.
inline constexpr double default_fz_threshold = 10.0;

/// Where the moment of a wrench is taken.
enum class wrench_place { hardware_origin, point_of_application };

/// The wrench of a platform in the laboratory, from its channels as they are: a set {9, 1, samples}
/// of F, M and P, which nothing but the handle holds. The handle denotes nothing when there is no
/// wrench; what could not be computed is a line in the log. Throws std::bad_alloc when memory is
/// short.
///
/// `fz_threshold`, not negative: least absolute Fz that has a point of application.
[[nodiscard]] strata::data_set compute_wrench(strata::data_group root,
                                              const platform_state& platform, wrench_place place,
                                              double fz_threshold);

} // namespace mox
