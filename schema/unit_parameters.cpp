#include "schema/unit_parameters.hpp"

#include <stdexcept>

#include <fmt/format.h>

namespace schema {

std::string text_parameter(const anvil::json& parameters, std::string_view unit, const char* name) {
    const auto found = parameters.is_object() ? parameters.find(name) : parameters.end();
    if (found == parameters.end() || !found->is_string()) {
        throw std::invalid_argument(
            fmt::format("{}: a text \"{}\" is expected among the parameters", unit, name));
    }
    return found->get<std::string>();
}

std::int64_t integer_parameter(const anvil::json& parameters, std::string_view unit,
                               const char* name) {
    const auto found = parameters.is_object() ? parameters.find(name) : parameters.end();
    if (found == parameters.end() || !found->is_number_integer()) {
        throw std::invalid_argument(
            fmt::format("{}: a whole number \"{}\" is expected among the parameters", unit, name));
    }
    return found->get<std::int64_t>();
}

strata::data_group reach_group(strata::data_group& root, std::string_view path) {
    return root.exists_group(path) ? root.retrieve_group(path) : root.create_group(path);
}

} // namespace schema
