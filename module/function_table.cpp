#include "store/python.hpp"

#include "module/function_table.hpp"

#include "acquisition/new_acquisition.hpp"
#include "acquisition/read_acquisition.hpp"
#include "acquisition/sampling.hpp"
#include "acquisition/set_sampling.hpp"
#include "api/analogs/read_analogs.hpp"
#include "api/points/read_points.hpp"
#include "module/function_row.hpp"
#include "module/handle_functions.hpp"
#include "module/overload.hpp"
#include "module/plugin_folder.hpp"

namespace mox {

namespace {

using strata::data_store;

constexpr char reload_documentation[] =
    " Unload all plugins and load the ones found in the plugins path. This function is usefull in case you added new "
    "plugins since the loading of the package. Notes: In case you want to replace a plugin by a newer version, you have "
    "first to use the unload() fonction. Your Operating System may lock the plugin files once loaded.";

} // namespace

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
        function_row<"moxGetVersion", &version>(),
        function_row<"moxGetAnalogSampleNumberPerFrame", &sampling::analog_samples_per_frame>(),
        function_row<"moxGetMaxInterpolationGap", &sampling::interpolation_gap>(),
        function_row<"moxGetLastFrame", &sampling::last_frame>(),
        function_row<"moxGetFirstFrame", &sampling::first_frame>(),
        function_row<"moxSetAnalogSampleNumberPerFrame", &sampling::set_analog_samples_per_frame>(),
        function_row<"moxSetAnalogResolution", &sampling::set_analog_resolution>(),
        function_row<"moxNewAcquisition", overload<data_store()>(&lifecycle::new_acquisition),
                     overload<data_store(int)>(&lifecycle::new_acquisition),
                     overload<data_store(int, int)>(&lifecycle::new_acquisition),
                     overload<data_store(int, int, int)>(&lifecycle::new_acquisition),
                     overload<data_store(int, int, int, int)>(&lifecycle::new_acquisition)>(),
        function_row<"moxSetFrameNumber", overload<void(data_store, int)>(&sampling::set_frame_number),
                     overload<void(data_store, int, int)>(&sampling::set_frame_number)>(),
        function_row<"moxSetFrequency", &sampling::set_frequency>(),
        function_row<"moxSetMaxInterpolationGap", &sampling::set_interpolation_gap>(),
        function_row<"moxSetFirstFrame", overload<void(data_store, int)>(&sampling::set_first_frame),
                     overload<void(data_store, int, int)>(&sampling::set_first_frame)>(),
        function_row<"moxCloseAcquisition", &lifecycle::close_acquisition>(),
        function_row<"moxDeleteAcquisition", &lifecycle::delete_acquisition>(),
        function_row<"moxGetAnglesValues", &points::angles_values>(),
        function_row<"moxGetAnalogsValues", &analogs::values>(),
        function_row<"moxGetForcesValues", &points::forces_values>(),
        function_row<"moxGetMomentsValues", &points::moments_values>(),
        function_row<"moxGetMarkersValues", &points::markers_values>(),
        function_row<"moxGetPointsValues", &points::all_values>(),
        function_row<"moxGetPowersValues", &points::powers_values>(),
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
