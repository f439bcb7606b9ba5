#include "store/python.hpp"

#include "module/trial_table.hpp"

#include "acquisition/files/read_trial.hpp"
#include "acquisition/files/trial_image.hpp"
#include "acquisition/files/write_trial.hpp"
#include "acquisition/new_acquisition.hpp"
#include "acquisition/time_base/crop_acquisition.hpp"
#include "acquisition/time_base/set_sampling.hpp"
#include "api/channels/channel_handle.hpp"
#include "api/channels/channel_keys.hpp"
#include "api/channels/channel_kinds.hpp"
#include "api/channels/modify_channels.hpp"
#include "api/channels/unread_channels.hpp"
#include "api/devices/platforms.hpp"
#include "api/devices/rotations.hpp"
#include "api/devices/set_rotation.hpp"
#include "api/devices/wrenches.hpp"
#include "api/events/single_events.hpp"
#include "api/metadata/entries.hpp"
#include "api/metadata/entry_record.hpp"
#include "api/points/residuals.hpp"
#include "module/function_row.hpp"

namespace mox {

// NOLINTNEXTLINE(readability-function-size): a table, with a row for each function
PyMethodDef* trial_table() {
    // clang-format off
    static PyMethodDef table[] = {
        trial_row<"read_file", &reading::read_file>(),
        trial_row<"read_bytes", &reading::read_bytes>(),
        trial_row<"write_file", &writing::write_file>(),
        trial_row<"write_bytes", &writing::write_bytes>(),
        trial_row<"warnings", &reading::warnings>(),
        trial_row<"source", &reading::source>(),
        trial_row<"unread", &channels::unread>(),
        trial_row<"carry_unread", &channels::carry_unread>(),
        trial_row<"copy", &lifecycle::copy>(),
        trial_row<"dump", &images::dump>(),
        trial_row<"load", &images::load>(),
        trial_row<"crop", &sampling::crop>(),
        trial_row<"set_time_base", &sampling::set_time_base>(),
        trial_row<"channel_keys", &channels::keys>(),
        trial_row<"channel_count", &channels::count>(),
        trial_row<"find_channel", &channels::find>(),
        trial_row<"channel_index", &channels::index>(),
        trial_row<"channel_kind", &channels::kind>(),
        trial_row<"channel_text", &channels::text>(),
        trial_row<"set_channel_text", &channels::set_text>(),
        trial_row<"channel_rate", &channels::rate>(),
        trial_row<"channel_shape", &channels::shape>(),
        trial_row<"channel_values", &channels::values>(),
        trial_row<"set_channel_values", &channels::set_values>(),
        trial_row<"carry_channel", &channels::carry>(),
        trial_row<"multiply_scale", &channels::multiply_scale>(),
        trial_row<"append_channel", &channels::append>(),
        trial_row<"remove_channel", &channels::remove>(),
        trial_row<"kind_values", &channels::all_values>(),
        trial_row<"set_kind_values", &channels::set_all_values>(),
        trial_row<"channel_residuals", &points::residuals>(),
        trial_row<"channel_cameras", &points::cameras>(),
        trial_row<"carry_residuals", &points::carry_residuals>(),
        trial_row<"multiply_residuals", &points::multiply_residuals>(),
        trial_row<"events", &events::list_events>(),
        trial_row<"append_event", &events::append_event>(),
        trial_row<"remove_event", &events::remove_event>(),
        trial_row<"replace_event", &events::replace_event>(),
        trial_row<"platform_count", &devices::platform_count>(),
        trial_row<"platform_description", &devices::platform_description>(),
        trial_row<"platform_channels", &devices::platform_channels>(),
        trial_row<"platform_wrench", &devices::wrench_of_platform>(),
        trial_row<"metadata_groups", &metadata::group_names>(),
        trial_row<"metadata_entries", &metadata::entry_names>(),
        trial_row<"has_metadata_group", &metadata::has_group>(),
        trial_row<"has_metadata_entry", &metadata::has_entry>(),
        trial_row<"metadata_entry", &metadata::entry_content>(),
        trial_row<"metadata_record", &metadata::entry_record>(),
        trial_row<"set_metadata_entry", &metadata::set_entry_content>(),
        trial_row<"set_metadata_group", &metadata::set_group_content>(),
        trial_row<"remove_metadata_group", &metadata::delete_group>(),
        trial_row<"remove_metadata_entry", &metadata::delete_entry>(),
        trial_row<"rotation_labels", &devices::rotation_labels>(),
        trial_row<"rotation_ratio", &devices::rotation_ratio>(),
        trial_row<"rotation_samples", &devices::rotation_samples>(),
        trial_row<"rotation_values", &devices::rotation>(),
        trial_row<"set_rotation", &devices::set_rotation>(),
        {nullptr, nullptr, 0, nullptr},
    };
    // clang-format on
    return table;
}

} // namespace mox
