#include <strata/callable_builder.hpp>

#include <string>

#include <strata/plugin/plugin.hpp>

#include "platform/strata/src/plugins/guarded_call.hpp"
#include "platform/strata/src/plugins/plugin_catalog.hpp"

namespace strata {

callable_builder::callable_builder() = default;
callable_builder::~callable_builder() = default;

anvil::status callable_builder::evaluate(data_group& target, const anvil::json& parameters) {
    const auto member = parameters.find("callable_unit");
    if (member == parameters.end() || !member->is_string()) {
        return anvil::status::failure(
            "The parameters name no callable unit: the text 'callable_unit' is missing");
    }
    const auto id = member->get<std::string>();
    const auto unit = detail::plugin_catalog::instance().find_offer<callable_unit>(id);
    if (!unit)
        return anvil::status::failure("The callable unit '" + id + "' is not loaded");
    return detail::guarded_call("The callable unit '" + id + "'",
                                [&] { return unit->evaluate(target, parameters); });
}

} // namespace strata
