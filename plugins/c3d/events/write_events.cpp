#include "plugins/c3d/events/write_events.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/events/event_grouping.hpp"
#include "plugins/c3d/events/event_sets.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"
#include "schema/event_sets.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

using word = std::numeric_limits<std::int16_t>;

constexpr char part_separator[] = "_"; // that events are named with when a file is read

/// Wherever the file has them.
bool are_equal(const std::vector<event_set>& left, const std::vector<event_set>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const event_set& a, const event_set& b) {
                          return a.name == b.name &&
                                 std::ranges::equal(a.occurrences, b.occurrences,
                                                    std::equal_to<schema::event_occurrence>());
                      });
}

std::vector<event_occurrence> in_set_order(const std::vector<event_set>& sets) {
    std::vector<event_occurrence> events;
    for (const auto& set : sets)
        events.insert(events.end(), set.occurrences.begin(), set.occurrences.end());
    return events;
}

bool have_order_of(const std::vector<event_set>& sets,
                   const std::vector<event_occurrence>& events) {
    const auto grouped = grouped_events(events, {}, part_separator);
    return std::equal(sets.begin(), sets.end(), grouped.begin(), grouped.end(),
                      [](const auto& a, const auto& b) { return a.name == b.name; });
}

/// A file drops the blanks that a text ends in, not those that it begins with. Where a context ends
/// in blanks they become the label's, so that the event keeps its name.
void keep_inner_blanks(event_occurrence& event) {
    const auto end = event.context.find_last_not_of(' ') + 1;
    event.label.insert(0, event.context, end);
    event.context.resize(end);
}

/// The occurrences, those of the file at their places, others behind; set by set when a reader
/// would find the sets in another order otherwise.
std::vector<event_occurrence> ordered_events(std::vector<event_set> sets,
                                             const std::vector<event_set>& former) {
    for (auto& set : sets) {
        const auto found = std::find_if(former.begin(), former.end(),
                                        [&](const auto& other) { return other.name == set.name; });
        for (std::size_t i = 0; i < set.occurrences.size(); ++i) {
            const bool is_former = found != former.end() && i < found->occurrences.size();
            set.occurrences[i].position = is_former ? found->occurrences[i].position
                                                    : std::numeric_limits<std::size_t>::max();
        }
    }
    auto events = in_set_order(sets);
    std::stable_sort(events.begin(), events.end(), [](const auto& left, const auto& right) {
        return left.position < right.position;
    });
    return have_order_of(sets, events) ? events : in_set_order(sets);
}

/// The lists of EVENT, column by column.
class event_lists {
  public:
    event_lists(written_group& group, std::span<const event_occurrence> events)
        : group_(group), events_(events), is_new_(group.parameters.empty()) {}

    void put() {
        put_count(group_, "USED", events_.size());
        put_texts_of("CONTEXTS", &event_occurrence::context, 16, true);
        put_texts_of("LABELS", &event_occurrence::label, 32, true);
        put_texts_of("DESCRIPTIONS", &event_occurrence::description, 80, false);
        put_times();
        put_texts_of("SUBJECTS", &event_occurrence::subject, 32, false);
        const bool other_spelling = group_.find("ICONS_IDS") && !group_.find("ICON_IDS");
        put_numbers_of(other_spelling ? "ICONS_IDS" : "ICON_IDS", &event_occurrence::icon);
        put_numbers_of("GENERIC_FLAGS", &event_occurrence::flags);
    }

  private:
    void put_texts_of(std::string_view name, std::string event_occurrence::* member,
                      std::size_t usual_width, bool always) {
        std::vector<std::string> texts;
        bool any = false;
        for (const auto& event : events_) {
            texts.push_back(event.*member);
            any = any || !texts.back().empty();
        }
        const bool exists = group_.find(name) != nullptr;
        if (always || any || is_new_ || exists)
            c3d::put_texts(group_, name, texts, exists ? 1 : usual_width);
    }

    /// Minutes and the seconds beyond them. Both together are exactly the time.
    void put_times() {
        std::vector<float> pairs;
        for (const auto& event : events_) {
            const auto minutes = std::trunc(event.time_s / 60.0F);
            pairs.push_back(minutes);
            pairs.push_back(static_cast<float>(double{event.time_s} - double{minutes} * 60.0));
        }
        put_pairs(group_, "TIMES", pairs);
    }

    void put_numbers_of(std::string_view name, int event_occurrence::* member) {
        std::vector<std::int64_t> numbers;
        bool any = false;
        for (const auto& event : events_) {
            const std::int64_t number = event.*member;
            if (number < word::min() || number > word::max()) {
                throw export_error("EVENT:{} of the event '{}' is {}; a C3D file holds {} to {}",
                                   name, event.label, number, word::min(), word::max());
            }
            numbers.push_back(number);
            any = any || number != 0;
        }
        if (any || is_new_ || group_.find(name))
            put_small_numbers(group_, name, numbers);
    }

    written_group& group_;
    std::span<const event_occurrence> events_;
    bool is_new_;
};

std::vector<header_event> header_events_read(const strata::data_group& format) {
    std::vector<header_event> events;
    if (!format.exists_group(schema::name::header))
        return events;
    const auto header = format.retrieve_group(schema::name::header);
    const auto times =
        schema::read_numbers<float>(header.retrieve_attribute(attribute::event_times));
    auto labels = schema::read_texts(header.retrieve_attribute(attribute::event_labels));
    auto statuses =
        schema::read_numbers<std::int32_t>(header.retrieve_attribute(attribute::event_statuses));
    labels.resize(times.size());
    statuses.resize(times.size());
    for (std::size_t i = 0; i < std::min(times.size(), most_header_events); ++i)
        events.push_back({times[i], static_cast<std::uint8_t>(statuses[i]), labels[i]});
    return events;
}

/// The header's events that `events` still have.
std::vector<header_event> remaining(std::vector<header_event> header,
                                    const std::vector<event_occurrence>& events) {
    std::erase_if(header, [&](const auto& item) {
        event_occurrence event;
        event.label = item.label;
        event.time_s = item.time;
        return !is_among(event, events);
    });
    return header;
}

} // namespace

std::vector<header_event> put_events(parameter_tree& tree, const strata::data_group& format) {
    auto header = header_events_read(format);
    const auto excess = std::erase_if(
        header, [](const auto& event) { return !stored_event_label(event.label).has_value(); });
    if (!format.exists_group(schema::name::events))
        return header;
    std::vector<event_occurrence> from_group;
    std::vector<event_occurrence> from_header;
    if (format.exists_group(schema::below_format::metadata_event))
        from_group = group_events(format.retrieve_group(schema::below_format::metadata_event));
    if (format.exists_group(schema::name::header))
        from_header = header_events(format.retrieve_group(schema::name::header));
    const auto former = grouped_events(from_group, from_header, part_separator);
    auto sets = read_event_sets(format.retrieve_group(schema::name::events));
    for (auto& set : sets)
        std::ranges::for_each(set.occurrences, keep_inner_blanks);
    if (excess == 0 && are_equal(sets, former))
        return header;
    const auto events = ordered_events(sets, former);
    if (!events.empty() || tree.find("EVENT"))
        event_lists(tree.reach("EVENT"), events).put();
    return remaining(std::move(header), events);
}

} // namespace c3d
