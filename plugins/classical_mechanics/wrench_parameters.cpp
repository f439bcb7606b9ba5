#include "plugins/classical_mechanics/wrench_parameters.hpp"

#include <stdexcept>

#include <fmt/format.h>

#include "plugins/classical_mechanics/ground_reaction_wrench.hpp"
#include "schema/computations.hpp"
#include "schema/unit_parameters.hpp"

namespace classical_mechanics {

namespace argument = schema::argument;

namespace {

[[noreturn]] void throw_expected(const char* what, const char* name) {
    throw std::invalid_argument(fmt::format("{}: {} \"{}\" is expected among the parameters",
                                            ground_reaction_wrench::id, what, name));
}

double threshold_of(const anvil::json& parameters) {
    const auto found = parameters.find(argument::fz_threshold);
    if (found == parameters.end() || !found->is_number() || !(found->get<double>() >= 0.0))
        throw_expected("a number that is not negative", argument::fz_threshold);
    return found->get<double>();
}

bool frame_of(const anvil::json& parameters) {
    const auto found = parameters.find(argument::global_transformation);
    if (found == parameters.end() || !found->is_boolean())
        throw_expected("true or false", argument::global_transformation);
    return found->get<bool>();
}

wrench_location location_of(const std::string& text) {
    if (text == schema::location::hardware_origin)
        return wrench_location::hardware_origin;
    if (text == schema::location::point_of_application)
        return wrench_location::point_of_application;
    throw_expected("\"hardware-origin\" or \"point-of-application\" as", argument::location);
}

} // namespace

wrench_parameters read_wrench_parameters(const anvil::json& parameters) {
    constexpr auto* unit = ground_reaction_wrench::id;
    using schema::text_parameter;
    return {text_parameter(parameters, unit, argument::source_group),
            text_parameter(parameters, unit, argument::destination_group), threshold_of(parameters),
            frame_of(parameters),
            location_of(text_parameter(parameters, unit, argument::location))};
}

} // namespace classical_mechanics
