#include "api/events/event_sets.hpp"

#include <fmt/format.h>

#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"

namespace mox::events {

namespace {

std::string without_underscores(std::string name) {
    // Kept: underscores are dropped, nothing else.
    std::erase(name, '_');
    return name;
}

} // namespace

strata::data_group event_group(const strata::data_store& acquisition) {
    return retrieve_group(acquisition.root(), schema::events);
}

strata::data_set existing_event(const strata::data_group& events, const std::string& name) {
    const auto set_name = without_underscores(name);
    if (!schema::is_path_component(set_name) || !events.exists_set(set_name))
        throw_runtime_error(fmt::format("Event label '{}' doesn't exist", set_name));
    return events.retrieve_set(set_name);
}

std::string set_name_to_append_to(const std::string& name) {
    auto set_name = without_underscores(name);
    if (set_name.empty())
        throw_runtime_error("Context and label of an event cannot both be empty");
    if (!schema::is_path_component(set_name))
        throw_runtime_error(fmt::format(
            "Context and label of an event cannot contain '/' or '\\', current are : '{}'", name));
    return set_name;
}

strata::data_set create_event(strata::data_group events, const std::string& set_name) {
    return events.create_set(set_name, strata::data_shape({0}, false), strata::data_type::float32);
}

} // namespace mox::events
