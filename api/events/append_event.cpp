#include "store/python.hpp"

#include "api/events/append_event.hpp"

#include <cmath>

#include <fmt/format.h>
#include <strata/access/draft_set.hpp>

#include "api/events/event_occurrences.hpp"
#include "api/events/event_sets.hpp"
#include "api/events/read_events.hpp"
#include "store/swig_error.hpp"

namespace mox::events {

namespace {

void start_event(strata::data_group events, const std::string& name, const occurrence& added) {
    const auto set = create_event(events, name);
    try {
        add_occurrence(set, added);
    } catch (...) {
        events.delete_set(name);
        throw;
    }
}

void grow_event(const strata::data_set& set, const occurrence& added) {
    const auto former_count = set.shape(false).element_count();
    try {
        add_occurrence(set, added);
    } catch (...) {
        keep_occurrences(set, former_count);
        throw;
    }
}

void rebuild_event(const strata::data_set& set, const occurrence& added) {
    const auto draft = strata::draft_of(set);
    add_occurrence(draft, added);
    strata::exchange_content(set, draft);
}

/// Adds an occurrence to the set `name`, which is created when there is none. When memory runs out,
/// nothing has changed.
void append_occurrence(const strata::data_group& events, const std::string& name,
                       const occurrence& added) {
    if (!events.exists_set(name))
        return start_event(events, name, added);
    const auto set = events.retrieve_set(name);
    if (only_grows(set, added))
        return grow_event(set, added);
    rebuild_event(set, added);
}

float single_precision_time(double time) {
    const auto narrowed = static_cast<float>(time);
    if (!std::isfinite(narrowed))
        throw_runtime_error(
            fmt::format("The time of an event must be a finite number in single precision, "
                        "current is : {}",
                        time));
    return narrowed;
}

} // namespace

outputs<2> append(strata::data_store acquisition, const std::string& label, const double& time,
                  const std::string& context) {
    return append_with_id(acquisition, label, time, context, {}, {}, -1);
}

outputs<2> append_with_subject(strata::data_store acquisition, const std::string& label,
                               const double& time, const std::string& context,
                               const std::string& subject) {
    return append_with_id(acquisition, label, time, context, subject, {}, -1);
}

outputs<2> append_with_description(strata::data_store acquisition, const std::string& label,
                                   const double& time, const std::string& context,
                                   const std::string& subject, const std::string& description) {
    return append_with_id(acquisition, label, time, context, subject, description, -1);
}

outputs<2> append_with_id(strata::data_store acquisition, const std::string& label,
                          const double& time, const std::string& context,
                          const std::string& subject, const std::string& description, int id) {
    const auto group = event_group(acquisition);
    const occurrence added{label, single_precision_time(time), context, subject, description, id};
    append_occurrence(group, set_name_to_append_to(context + label), added);
    return all(acquisition);
}

} // namespace mox::events
