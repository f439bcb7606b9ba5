#pragma once

#include <anvil/json.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/plugin/plugin.hpp>

#include "schema/computations.hpp"

namespace c3d {

/// Makes a set for each event name from the parameters of the group EVENT, and from those events of
/// the header block that the group does not have.
///
/// Parameters: "SourceGroup", the group that holds `Format` (usually ""), "DestinationGroup" and
/// "PartSeparator". The destination is made in any case; sets of the names that it gets are
/// replaced.
///
/// An event's name is its context and its label. The separator, with which the two are joined, is
/// dropped wherever it stands, and so are "/" and "\"; an event without a name is an "Event". Times
/// (`float32`, seconds) keep the order of the file.
///
/// Attributes of a set: `Context`, `Icons` ({1}), `Subject`, `Description`, `Type`, taken from its
/// first occurrence; and, with an element for each occurrence, `OccurrenceContexts`,
/// `OccurrenceLabels`, `OccurrenceSubjects`, `OccurrenceDescriptions` (string), `OccurrenceIcons`,
/// `OccurrenceFlags` (int32).
class events_detect final : public strata::callable_unit {
  public:
    static constexpr const char* id = schema::computation::detect_events;

    [[nodiscard]] anvil::status evaluate(strata::data_group& target,
                                         const anvil::json& parameters) const override;
};

} // namespace c3d
