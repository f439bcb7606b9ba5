#include "store/python.hpp"

#include "api/devices/wrenches.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include <fmt/format.h>

#include "acquisition/channels/channels.hpp"
#include "acquisition/files/unread_parts.hpp"
#include "acquisition/platforms/force_platforms.hpp"
#include "acquisition/platforms/platform_wrench.hpp"
#include "acquisition/time_base/resize_channels.hpp"
#include "api/devices/platforms.hpp"
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

/// A platform whose channels were not read has a wrench, though nobody knows it here.
void require_measured(const strata::data_group& root, error_code code) {
    if (lacks_analogs(root) && !describe_platforms(root).empty())
        throw swig_error(code, "only a part of the file was read, without the analog channels that "
                               "its force platforms measure with");
}

/// F, M and P in order; without value where there is no wrench.
std::array<py_ref, vectors.size()> arrays_of(const strata::data_set& set, std::uint64_t samples) {
    std::array<py_ref, vectors.size()> arrays;
    std::uint64_t first = 0;
    for (auto& array : arrays) {
        array = set ? vectors_as_array(set, first) : vectors_without_value(samples);
        first += 3;
    }
    return arrays;
}

py_ref wrench_of(const strata::data_set& set, std::uint64_t samples) {
    auto wrench = py_ref::checked(PyDict_New());
    const auto arrays = arrays_of(set, samples);
    for (std::size_t i = 0; i < vectors.size(); ++i)
        set_item(wrench.get(), vectors[i], arrays[i]);
    return wrench;
}

py_ref wrenches(strata::data_store acquisition, wrench_place place, double fz_threshold) {
    const auto root = acquisition.root();
    require_measured(root, error_code::runtime);
    const auto platforms = bring_platforms_up_to_date(root);
    const auto samples = analog_samples(root);
    require_memory(static_cast<double>(platforms.size()) *
                   (wrench_components * static_cast<double>(samples) + result_overhead));
    auto list = py_ref::checked(PyList_New(0));
    const wrench_request request{place, wrench_axes::laboratory, fz_threshold};
    for (const auto& platform : platforms) {
        const auto wrench = wrench_of(compute_wrench(root, platform, request), samples);
        if (PyList_Append(list.get(), wrench.get()) < 0)
            throw python_error{};
    }
    return list;
}

/// The value that belongs to `word`; ValueError that names the words when it is neither.
template <typename Value>
Value chosen(const char* what, const std::string& word,
             const std::array<std::pair<const char*, Value>, 2>& choices) {
    for (const auto& [known, value] : choices) {
        if (word == known)
            return value;
    }
    throw swig_error(error_code::value, fmt::format("{} is '{}' or '{}', not '{}'", what,
                                                    choices[0].first, choices[1].first, word));
}

wrench_request checked_request(const std::string& place, const std::string& axes,
                               double fz_threshold) {
    if (!(fz_threshold >= 0.0))
        throw swig_error(
            error_code::value,
            fmt::format("a threshold is a number that is not negative, not {}", fz_threshold));
    return {
        chosen<wrench_place>("at", place,
                             {{{"cop", wrench_place::point_of_application},
                               {"origin", wrench_place::hardware_origin}}}),
        chosen<wrench_axes>("frame", axes,
                            {{{"lab", wrench_axes::laboratory}, {"plate", wrench_axes::platform}}}),
        fz_threshold};
}

} // namespace

outputs<3> wrench_of_platform(strata::data_store acquisition, int index, const std::string& place,
                              const std::string& axes, double fz_threshold) {
    const auto request = checked_request(place, axes, fz_threshold);
    const auto root = acquisition.root();
    require_measured(root, error_code::value);
    const auto platforms = bring_platforms_up_to_date(root);
    const auto& platform = platform_at(platforms, index);
    const auto samples = analog_samples(root);
    require_memory(wrench_components * static_cast<double>(samples) + result_overhead);
    auto arrays = arrays_of(compute_wrench(root, platform, request), samples);
    for (const auto& array : arrays)
        PyArray_CLEARFLAGS(array.array(), NPY_ARRAY_WRITEABLE);
    return {std::move(arrays[0]), std::move(arrays[1]), std::move(arrays[2])};
}

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
