#include "acquisition/platforms/platform_wrench.hpp"

#include <new>
#include <string>

#include <fmt/format.h>
#include <strata/callable_builder.hpp>

#include "schema/computations.hpp"
#include "schema/names.hpp"
#include "store/store_log.hpp"

namespace mox {

namespace argument = schema::argument;

strata::data_set compute_wrench(strata::data_group root, const platform_state& platform,
                                const wrench_request& request) {
    if (!platform.group)
        return {};
    auto group = *platform.group;
    const bool is_applied = request.place == wrench_place::point_of_application;
    const std::string name =
        is_applied ? schema::name::wrench_at_point : schema::name::wrench_at_origin;
    const auto path = fmt::format("{}/{}", schema::force_plates, group.name());
    const auto status = strata::callable_builder().evaluate(
        root, {{"callable_unit", schema::computation::ground_reaction_wrench},
               {argument::source_group, path},
               {argument::destination_group, fmt::format("{}/{}", path, name)},
               {argument::fz_threshold, request.fz_threshold},
               {argument::global_transformation, request.axes == wrench_axes::laboratory},
               {argument::location, is_applied ? schema::location::point_of_application
                                               : schema::location::hardware_origin}});
    if (status.is_out_of_memory())
        throw std::bad_alloc();
    if (!status) {
        log_store_failure(status.message(", "));
        return {};
    }
    // A wrench holds for this moment only, and is as large as nine channels: it does not stay.
    auto wrench = group.retrieve_set(name);
    group.delete_set(name);
    return wrench;
}

} // namespace mox
