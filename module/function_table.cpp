#include "store/python.hpp"

#include "module/function_table.hpp"

#include "acquisition/files/read_acquisition.hpp"
#include "acquisition/files/write_acquisition.hpp"
#include "acquisition/new_acquisition.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "acquisition/time_base/set_sampling.hpp"
#include "api/analogs/modify_analogs.hpp"
#include "api/analogs/read_analogs.hpp"
#include "api/analogs/set_analog_attributes.hpp"
#include "api/devices/force_platforms.hpp"
#include "api/devices/rotations.hpp"
#include "api/devices/wrenches.hpp"
#include "api/events/append_event.hpp"
#include "api/events/modify_events.hpp"
#include "api/events/read_events.hpp"
#include "api/metadata/analysis.hpp"
#include "api/metadata/info_record.hpp"
#include "api/metadata/modify_metadata.hpp"
#include "api/metadata/read_metadata.hpp"
#include "api/points/modify_points.hpp"
#include "api/points/read_points.hpp"
#include "api/points/set_point_values.hpp"
#include "module/function_row.hpp"
#include "module/handle_functions.hpp"
#include "module/overload.hpp"
#include "module/plugin_folder.hpp"

namespace mox {

namespace {

using strata::data_store;

// Kept with its spelling and its leading blank: scripts compare it.
constexpr char reload_documentation[] =
    " Unload all plugins and load the ones found in the plugins path. This function is usefull in "
    "case you added new "
    "plugins since the loading of the package. Notes: In case you want to replace a plugin by a "
    "newer version, you have "
    "first to use the unload() fonction. Your Operating System may lock the plugin files once "
    "loaded.";

} // namespace

// NOLINTNEXTLINE(readability-function-size): a table, with a row for each function
PyMethodDef* function_table() {
    // clang-format off
    static PyMethodDef table[] = {
        function_row<"SWIG_PyInstanceMethod_New", &handles::instance_method>(),
        function_row<"new_data_store", &handles::new_store>(),
        function_row<"delete_data_store", &handles::delete_store>(),
        function_row<"data_store_swigregister", &handles::register_shadow>(),
        function_row<"data_store_swiginit", &handles::initialise_shadow_instance>(),
        function_row<"unload", &unload_plugins>(),
        function_row<"reload", &reload_plugins>(reload_documentation),
        function_row<"moxReadAcquisition", &reading::read_acquisition>(),
        function_row<"moxGetEvents", &events::all>(),
        function_row<"moxGetAngles", &points::angles>(),
        function_row<"moxGetMoments", &points::moments>(),
        function_row<"moxGetForces", &points::forces>(),
        function_row<"moxGetPowers", &points::powers>(),
        function_row<"moxGetMarkers", &points::markers>(),
        function_row<"moxGetPoints", &points::all>(),
        function_row<"moxGetAnalogs", &analogs::all>(),
        function_row<"moxGetAnalog", &analogs::by_index, &analogs::by_label>(),
        function_row<"moxGetPoint", &points::by_index, &points::by_label>(),
        function_row<"moxGetPointFrequency", &sampling::point_frequency>(),
        function_row<"moxGetPointFrameNumber", &sampling::point_frame_number>(),
        function_row<"moxGetPointNumber", &points::number>(),
        function_row<"moxGetAnalogNumber", &analogs::number>(),
        function_row<"moxGetAnalogFrameNumber", &sampling::analog_frame_number>(),
        function_row<"moxGetAnalogResolution", &sampling::analog_resolution>(),
        function_row<"moxGetAnalogFrequency", &sampling::analog_frequency>(),
        function_row<"moxGetPointsUnit", &points::unit>(),
        function_row<"moxGetEventNumber", &events::number>(),
        function_row<"moxGetForcePlatforms", &devices::force_platforms>(),
        function_row<"moxGetVersion", &version>(),
        function_row<"moxGetMetaData", &metadata::all, &metadata::of_group, &metadata::of_entry>(),
        function_row<"moxGetGroundReactionWrenches", &devices::ground_reaction_wrenches_over,
                     &devices::ground_reaction_wrenches>(),
        function_row<"moxGetForcePlatformWrenches", &devices::platform_wrenches_in_frame,
                     &devices::platform_wrenches>(),
        function_row<"moxGetAnalogSampleNumberPerFrame", &sampling::analog_samples_per_frame>(),
        function_row<"moxGetMaxInterpolationGap", &sampling::interpolation_gap>(),
        function_row<"moxGetLastFrame", &sampling::last_frame>(),
        function_row<"moxGetFirstFrame", &sampling::first_frame>(),
        function_row<"moxMetaDataInfo", &metadata::info_record_of_dimensions, &metadata::info_record>(),
        function_row<"moxFindMetaData", &metadata::of_group, &metadata::of_entry>(),
        function_row<"moxGetAnalysis", &analysis::all>(),
        // Kept: the second output of both is always None.
        function_row<"moxGetRotations", &devices::rotations>(),
        function_row<"moxGetRotation", &devices::rotation>(),
        function_row<"moxSetAnalogDescription", &analogs::set_description_by_index,
                     &analogs::set_description_by_label>(),
        function_row<"moxSetAnalogGain", &analogs::set_gain_by_index, &analogs::set_gain_by_label>(),
        function_row<"moxSetAnalogLabel", &analogs::set_label_by_index, &analogs::set_label_by_label>(),
        function_row<"moxSetAnalogOffset", &analogs::set_offset_by_index, &analogs::set_offset_by_label>(),
        function_row<"moxSetAnalogScale", &analogs::set_scale_by_index, &analogs::set_scale_by_label>(),
        function_row<"moxSetAnalogUnit", &analogs::set_unit_by_index, &analogs::set_unit_by_label>(),
        // Kept: fewer channels than there are leaves as many as were to go.
        function_row<"moxSetAnalogNumber", &analogs::set_number>(),
        function_row<"moxSetAnalogSampleNumberPerFrame", &sampling::set_analog_samples_per_frame>(),
        function_row<"moxSetAnalogResolution", &sampling::set_analog_resolution>(),
        function_row<"moxSetAnalogsValues", &analogs::set_all_values>(),
        function_row<"moxSetAnalogValues", &analogs::set_values_by_index, &analogs::set_values_by_label>(),
        function_row<"moxClearAnalogs", &analogs::clear>(),
        function_row<"moxRemoveAnalog", &analogs::remove_by_label, &analogs::remove_by_index>(),
        function_row<"moxAppendAnalog", &analogs::append_described, &analogs::append>(),
        function_row<"moxSetEventDescription", &events::set_description>(),
        function_row<"moxClearEvents", &events::clear>(),
        function_row<"moxAppendEvent", &events::append,
                     &events::append_with_subject,
                     &events::append_with_description,
                     &events::append_with_id>(),
        function_row<"moxSetEventId", &events::set_id>(),
        // Kept: these three always refuse, once their arguments are right.
        function_row<"moxSetEventLabel", &events::set_label>(),
        function_row<"moxSetEventTime", &events::set_time>(),
        function_row<"moxSetEventSubject", &events::set_subject>(),
        function_row<"moxSetForcesValues", &points::set_forces_values>(),
        function_row<"moxSetMarkersValues", &points::set_markers_values>(),
        // Kept: the angles' setter writes the markers.
        function_row<"moxSetAnglesValues", &points::set_markers_values>(),
        function_row<"moxSetPowersValues", &points::set_powers_values>(),
        function_row<"moxSetMomentsValues", &points::set_moments_values>(),
        function_row<"moxSetPointValues", &points::set_values_by_index, &points::set_values_by_label>(),
        function_row<"moxSetPointsValues", &points::set_all_values>(),
        function_row<"moxAppendPoint", &points::append>(),
        function_row<"moxClearPoints", &points::clear>(),
        function_row<"moxRemovePoint", &points::remove_by_label, &points::remove_by_index>(),
        // Kept: fewer points than there are leaves as many as were to go.
        function_row<"moxSetPointNumber", &points::set_number>(),
        function_row<"moxSetPointsUnit", &points::set_unit>(),
        function_row<"moxSetPointType", &points::set_type_by_index, &points::set_type_by_label>(),
        function_row<"moxSetPointLabel", &points::set_label_by_label, &points::set_label_by_index>(),
        function_row<"moxSetPointDescription", &points::set_description_by_label, &points::set_description_by_index>(),
        function_row<"moxNewAcquisition", overload<data_store()>(&lifecycle::new_acquisition),
                     overload<data_store(int)>(&lifecycle::new_acquisition),
                     overload<data_store(int, int)>(&lifecycle::new_acquisition),
                     overload<data_store(int, int, int)>(&lifecycle::new_acquisition),
                     overload<data_store(int, int, int, int)>(&lifecycle::new_acquisition)>(),
        function_row<"moxSetFrameNumber", overload<void(data_store, int)>(&sampling::set_frame_number),
                     overload<void(data_store, int, int)>(&sampling::set_frame_number)>(),
        function_row<"moxSetFrequency", &sampling::set_frequency>(),
        function_row<"moxSetMaxInterpolationGap", &sampling::set_interpolation_gap>(),
        function_row<"moxAppendMetaData", &metadata::append>(),
        function_row<"moxClearMetaData", &metadata::clear>(),
        function_row<"moxRemoveMetaData", &metadata::remove_group, &metadata::remove_entry>(),
        function_row<"moxSetMetaDataDimensions", &metadata::set_dimensions, &metadata::set_dimensions_at>(),
        // Kept: changes nothing.
        function_row<"moxSetMetaDataDescription", &metadata::set_description_at, &metadata::set_description>(),
        function_row<"moxSetMetaDataFormat", &metadata::set_format_at, &metadata::set_format>(),
        function_row<"moxSetMetaDataValue", &metadata::set_value, &metadata::set_value_at>(),
        function_row<"moxSetMetaData", &metadata::set>(),
        // Kept: these three always refuse, once their arguments are right.
        function_row<"moxAppendAnalysisParameter", &analysis::append,
                     &analysis::append_with_unit,
                     &analysis::append_with_description>(),
        function_row<"moxClearAnalysis", &analysis::clear>(),
        function_row<"moxRemoveAnalysisParameter", &analysis::remove_by_index, &analysis::remove_by_name>(),
        function_row<"moxSetFirstFrame", overload<void(data_store, int)>(&sampling::set_first_frame),
                     overload<void(data_store, int, int)>(&sampling::set_first_frame)>(),
        function_row<"moxWriteAcquisition", &writing::write_acquisition>(),
        // Kept: both look at their argument and free nothing.
        function_row<"moxCloseAcquisition", &lifecycle::close_acquisition>(),
        function_row<"moxDeleteAcquisition", &lifecycle::delete_acquisition>(),
        function_row<"moxGetAnglesValues", &points::angles_values>(),
        function_row<"moxGetAnalogsValues", &analogs::values>(),
        function_row<"moxGetForcesValues", &points::forces_values>(),
        function_row<"moxGetMomentsValues", &points::moments_values>(),
        function_row<"moxGetMarkersValues", &points::markers_values>(),
        function_row<"moxGetPointsValues", &points::all_values>(),
        function_row<"moxGetPowersValues", &points::powers_values>(),
        function_row<"moxGetEventsValues", &events::values>(),
        function_row<"throw_type_error", &handles::throw_type_error>(),
        function_row<"metadata_from_data_set", &handles::metadata_from_data_set>(),
        function_row<"from_anvil_json", &handles::from_json>(),
        function_row<"anvil_to_json", &handles::to_json>(),
        {nullptr, nullptr, 0, nullptr},
    };
    // clang-format on
    return table;
}

} // namespace mox
