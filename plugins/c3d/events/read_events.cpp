#include "plugins/c3d/events/read_events.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

float seconds(float minutes, float rest) {
    return static_cast<float>(double{minutes} * 60.0 + double{rest});
}

/// True when the first half can be the minutes of all events, and not every other value: where the
/// dimensions are exchanged, the order may be as well.
bool is_planes(const std::vector<float>& values) {
    const auto is_whole = [](float value) { return std::floor(value) == value; };
    bool pairs = true;
    for (std::size_t i = 0; i < values.size(); i += 2)
        pairs = pairs && is_whole(values[i]);
    const auto half = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    return !pairs && std::all_of(values.begin(), half, is_whole);
}

/// The lists of EVENT that go on as LABELS2, TIMES2 and so on: `number` 1 is the first part.
class event_part {
  public:
    event_part(const strata::data_group& group, std::size_t number)
        : group_(group), suffix_(number == 1 ? "" : std::to_string(number)) {}

    [[nodiscard]] bool exists() const {
        return find({"TIMES"}) || find({"LABELS"}) || find({"CONTEXTS"});
    }
    [[nodiscard]] std::vector<std::string> texts(const char* name) const {
        return schema::read_texts(find({name}));
    }
    [[nodiscard]] std::vector<int> numbers(std::initializer_list<const char*> names) const {
        return schema::read_numbers<std::int32_t>(find(names));
    }
    [[nodiscard]] std::vector<float> times(std::size_t used) const {
        const auto attribute = find({"TIMES"});
        if (!attribute)
            return {};
        return event_seconds(schema::read_numbers<float>(attribute), attribute.shape().dimensions(),
                             used);
    }

  private:
    [[nodiscard]] strata::data_attribute find(std::initializer_list<const char*> names) const {
        for (const auto* name : names) {
            const auto full_name = name + suffix_;
            if (group_.exists_attribute(full_name))
                return group_.retrieve_attribute(full_name);
        }
        return {};
    }

    const strata::data_group& group_;
    std::string suffix_;
};

template <typename Value>
Value element_or(const std::vector<Value>& values, std::size_t index, const Value& missing) {
    return index < values.size() ? values[index] : missing;
}

void append_part(const event_part& part, std::size_t used, std::vector<event_occurrence>& events) {
    const auto times = part.times(used);
    const auto contexts = part.texts("CONTEXTS");
    const auto labels = part.texts("LABELS");
    const auto subjects = part.texts("SUBJECTS");
    const auto descriptions = part.texts("DESCRIPTIONS");
    const auto icons =
        part.numbers({"ICON_IDS", "ICONS_IDS"}); // the second is a spelling of real files
    const auto flags = part.numbers({"GENERIC_FLAGS"});
    const std::string none;
    // Lists of one file differ in length: an event has a time, the rest may be missing.
    for (std::size_t i = 0; i < std::min(times.size(), used); ++i) {
        events.push_back({{element_or(contexts, i, none), element_or(labels, i, none),
                           element_or(subjects, i, none), element_or(descriptions, i, none),
                           times[i], element_or(icons, i, 0), element_or(flags, i, 0)},
                          events.size(),
                          i < icons.size()});
    }
}

} // namespace

std::vector<float> event_seconds(const std::vector<float>& values,
                                 const std::vector<std::int64_t>& extents, std::size_t used) {
    const bool two_dimensions = extents.size() == 2;
    const bool by_pairs = two_dimensions && extents[1] == 2;
    const bool by_two = two_dimensions && extents[0] == 2 && extents[1] != 1;
    // One row, as some writers store it, is seconds, unless it is twice as long as USED says.
    const bool unsaid = !by_pairs && !by_two && (!two_dimensions || extents[1] != 1);
    const bool twice = unsaid && values.size() == 2 * used;
    if (!by_pairs && !by_two && !twice)
        return values;

    const auto count = values.size() / 2;
    std::vector<float> result(count);
    const bool planes = by_two && !by_pairs && is_planes(values);
    for (std::size_t i = 0; i < count; ++i) {
        result[i] = planes ? seconds(values[i], values[count + i])
                           : seconds(values[2 * i], values[2 * i + 1]);
    }
    return result;
}

std::vector<event_occurrence> group_events(const strata::data_group& event) {
    const auto stored =
        schema::read_number<double>(event.retrieve_attribute(schema::parameter::used));
    // USED is a word without sign, which the store holds as one with.
    auto used = std::numeric_limits<std::size_t>::max() / 2;
    if (stored)
        used = static_cast<std::size_t>(
            std::clamp(*stored < 0.0 ? *stored + 65536.0 : *stored, 0.0, 1e9));

    std::vector<event_occurrence> events;
    for (std::size_t number = 1; events.size() < used; ++number) {
        const event_part part(event, number);
        if (!part.exists())
            break;
        append_part(part, used - events.size(), events);
    }
    std::erase_if(events, [](const auto& occurrence) { return !std::isfinite(occurrence.time_s); });
    return events;
}

std::vector<event_occurrence> header_events(const strata::data_group& header) {
    if (!header.exists_attribute(attribute::event_times))
        return {};
    const auto times =
        schema::read_numbers<float>(header.retrieve_attribute(attribute::event_times));
    const auto labels = schema::read_texts(header.retrieve_attribute(attribute::event_labels));
    std::vector<event_occurrence> events;
    for (std::size_t i = 0; i < times.size(); ++i) {
        event_occurrence event;
        event.label = element_or(labels, i, std::string());
        event.time_s = times[i];
        event.position = i;
        events.push_back(std::move(event));
    }
    return events;
}

} // namespace c3d
