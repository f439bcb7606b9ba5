#include "plugins/c3d/events/event_grouping.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include "schema/event_sets.hpp"

namespace c3d {

namespace {

/// Half a millisecond: the header block and the group hold the same time with different roundings.
constexpr float same_time_s = 0.0005F;

class event_sets {
  public:
    explicit event_sets(std::string separator) : separator_(std::move(separator)) {}

    void add(event_occurrence event) {
        const auto name = schema::event_set_name(event.context, event.label, separator_);
        for (std::size_t number = 1;; ++number) {
            const auto candidate = schema::numbered_event_set(name, number);
            const auto [entry, is_new] = by_name_.try_emplace(candidate, sets_.size());
            if (is_new)
                sets_.push_back({candidate, {}});
            auto& occurrences = sets_[entry->second].occurrences;
            if (is_new || occurrences.front().context == event.context) {
                occurrences.push_back(std::move(event));
                return;
            }
        }
    }

    [[nodiscard]] std::vector<event_set> take() && { return std::move(sets_); }

  private:
    std::string separator_;
    std::vector<event_set> sets_;
    std::unordered_map<std::string, std::size_t> by_name_;
};

} // namespace

std::vector<event_set> grouped_events(const std::vector<event_occurrence>& from_group,
                                      const std::vector<event_occurrence>& from_header,
                                      const std::string& separator) {
    event_sets sets(separator);
    for (const auto& event : from_group)
        sets.add(event);
    for (auto event : from_header) {
        event.position += from_group.size();
        if (!is_among(event, from_group))
            sets.add(std::move(event));
    }
    return std::move(sets).take();
}

bool is_among(const event_occurrence& header_event, const std::vector<event_occurrence>& events) {
    return std::any_of(events.begin(), events.end(), [&](const auto& event) {
        return std::abs(event.time_s - header_event.time_s) <= same_time_s &&
               (event.label == header_event.label ||
                event.context + event.label == header_event.label);
    });
}

} // namespace c3d
