#include "store/python.hpp"

#include "api/events/modify_events.hpp"

#include <vector>

#include "api/events/event_occurrences.hpp"
#include "api/events/event_sets.hpp"
#include "api/events/read_events.hpp"
#include "api/unavailable.hpp"
#include "schema/read_attribute.hpp"
#include "store/path_helpers.hpp"
#include "store/typed_access.hpp"

namespace mox::events {

namespace {

/// Gives a set an id. False when it has no place for one; the occurrences keep theirs then, too.
bool write_icons(const strata::data_set& set, int id) {
    const auto icons = set.retrieve_attribute(attribute::event_icons);
    const auto count = icons ? icons.shape().element_count() : 0;
    if (count == 0)
        return false;
    write_vector(icons, std::vector<std::int32_t>(count, id));
    return schema::holds_numbers(icons);
}

} // namespace

outputs<2> set_description(strata::data_store acquisition, const std::string& event,
                           const std::string& description) {
    const auto set = existing_event(event_group(acquisition), event);
    const auto occurrences = set.retrieve_attribute(attribute::occurrence_descriptions);
    if (write_description(set, description) && occurrences)
        write_vector(occurrences, std::vector(occurrences.shape().element_count(), description));
    return all(acquisition);
}

outputs<2> set_id(strata::data_store acquisition, const std::string& event, int id) {
    const auto set = existing_event(event_group(acquisition), event);
    const auto occurrences = set.retrieve_attribute(attribute::occurrence_icons);
    if (write_icons(set, id) && occurrences)
        write_vector(occurrences,
                     std::vector<std::int32_t>(occurrences.shape().element_count(), id));
    return all(acquisition);
}

outputs<2> set_label(strata::data_store /*acquisition*/, int /*index*/,
                     const std::string& /*label*/) {
    throw_not_implemented();
}

outputs<2> set_time(strata::data_store /*acquisition*/, int /*index*/, float /*time*/) {
    throw_not_implemented();
}

outputs<2> set_subject(strata::data_store /*acquisition*/, int /*index*/,
                       const std::string& /*subject*/) {
    throw_not_implemented();
}

void clear(strata::data_store acquisition) { delete_sets(event_group(acquisition)); }

} // namespace mox::events
