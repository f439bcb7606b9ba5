#pragma once

#include <string>

#include <anvil/json.hpp>

namespace classical_mechanics {

/// Where the moment of a wrench is taken.
enum class wrench_location { hardware_origin, point_of_application };

struct wrench_parameters {
    std::string source_group;
    std::string destination_set;
    double fz_threshold = 0.0;  ///< in the unit of the force channels
    bool in_laboratory = false; ///< false: in the platform's axes at its surface centre
    wrench_location location = wrench_location::hardware_origin;
};

/// Throws std::invalid_argument that names the member which is missing or of the wrong kind.
[[nodiscard]] wrench_parameters read_wrench_parameters(const anvil::json& parameters);

} // namespace classical_mechanics
