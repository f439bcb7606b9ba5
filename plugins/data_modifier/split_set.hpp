// One set with many channels becomes a set for each.
//
// | file              |                                              |
// |-------------------|----------------------------------------------|
// | split_set         | the unit                                     |
// | split_parameters  | what it is asked for                         |
// | split_source      | the set with all channels                    |
// | channel_names     | names of their sets                          |
// | attribute_column  | values that become an attribute of each set  |
// | destination_group | where the sets go; taken back when one fails |
// | split_error       | why a set cannot be split                    |
// | plugin            | what the plugin offers                       |

#pragma once

#include <strata/plugin/plugin.hpp>

namespace data_modifier {

/// Makes one set for each channel of a set with many, sharing the samples. Parameters:
///
/// - `SourceSet`: path of a set of numbers with the dimensions components, channels and samples,
///   and with the texts `Labels`, one for each channel;
/// - `DestinationGroup`: path of the group that receives the sets; created when missing. It
///   receives `NumSamples`, `SampleRate` and `StartTime` of the source;
/// - `LabelsFilter` (optional): array of the labels of the channels to take;
/// - `SourceAttributesSplit` (optional): object that maps array attributes of the source, one
///   element for each channel, to attributes of the channels' sets.
///
/// Numeric attributes of the source with a row for each channel follow the channels under their
/// names. After a failure the tree is as it was before.
class split_set_unit final : public strata::callable_unit {
  public:
    [[nodiscard]] anvil::status evaluate(strata::data_group& target,
                                         const anvil::json& parameters) const override;
};

} // namespace data_modifier
