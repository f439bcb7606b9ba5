#include "store/python.hpp"

#include "api/devices/wrenches.hpp"

#include <array>
#include <cstdint>
#include <utility>

#include <fmt/format.h>

#include "acquisition/channels/channels.hpp"
#include "acquisition/platforms/force_platforms.hpp"
#include "acquisition/platforms/platform_wrench.hpp"
#include "acquisition/time_base/resize_channels.hpp"
#include "api/devices/sample_rows.hpp"
#include "schema/names.hpp"
#include "store/dictionary.hpp"
#include "store/swig_error.hpp"

namespace mox::devices {

namespace {

/// Keys of a wrench, in the order of its components, three each.
constexpr std::array<const char*, 3> vectors = {"F", "M", "P"};
constexpr double wrench_components = 9.0;

std::uint64_t analog_samples(const strata::data_group& root) {
    return root.exists_group(schema::analogs_export)
               ? samples_of(root.retrieve_group(schema::analogs_export))
               : 0;
}

py_ref wrench_of(const strata::data_set& set, std::uint64_t samples) {
    auto wrench = py_ref::checked(PyDict_New());
    std::uint64_t first = 0;
    for (const auto* key : vectors) {
        set_item(wrench.get(), key,
                 set ? vectors_as_array(set, first) : vectors_without_value(samples));
        first += 3;
    }
    return wrench;
}

py_ref wrenches(strata::data_store acquisition, wrench_place place, double fz_threshold) {
    const auto root = acquisition.root();
    const auto platforms = bring_platforms_up_to_date(root);
    const auto samples = analog_samples(root);
    require_memory(static_cast<double>(platforms.size()) *
                   (wrench_components * static_cast<double>(samples) + result_overhead));
    auto list = py_ref::checked(PyList_New(0));
    for (const auto& platform : platforms) {
        const auto wrench = wrench_of(compute_wrench(root, platform, place, fz_threshold), samples);
        if (PyList_Append(list.get(), wrench.get()) < 0)
            throw python_error{};
    }
    return list;
}

} // namespace

py_ref platform_wrenches(strata::data_store acquisition) {
    return wrenches(std::move(acquisition), wrench_place::hardware_origin, default_fz_threshold);
}

py_ref platform_wrenches_in_frame(strata::data_store acquisition, int in_global_frame) {
    if (in_global_frame != 0 && in_global_frame != 1)
        throw_runtime_error("Only an integer with value of 0 and 1 is admissible for inglobalframe "
                            "argument.");
    if (in_global_frame == 0)
        throw_runtime_error("The option to retrieve wrenches in local frame is not yet supported "
                            "in this version. If you expected this feature for your current uses, "
                            "please contact Tarvex for further discussion.");
    return platform_wrenches(std::move(acquisition));
}

py_ref ground_reaction_wrenches(strata::data_store acquisition) {
    return wrenches(std::move(acquisition), wrench_place::point_of_application,
                    default_fz_threshold);
}

py_ref ground_reaction_wrenches_over(strata::data_store acquisition, const double& fz_threshold) {
    if (!(fz_threshold >= 0.0))
        throw_runtime_error(fmt::format(
            "The Fz threshold must be a number that is not negative, not {}", fz_threshold));
    return wrenches(std::move(acquisition), wrench_place::point_of_application, fz_threshold);
}

} // namespace mox::devices
