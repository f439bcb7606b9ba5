#include "plugins/classical_mechanics/ground_reaction_wrench.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include <strata/plugin/channel_buffer.hpp>
#include <strata/plugin/status_of.hpp>

#include "plugins/classical_mechanics/measured_platform.hpp"
#include "plugins/classical_mechanics/sample_block.hpp"
#include "plugins/classical_mechanics/wrench_parameters.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"

namespace classical_mechanics {

namespace {

constexpr std::uint64_t wrench_components = 9;

/// A path without its last component; empty when it has only one.
std::string_view holder_of(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

std::string_view last_of(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

strata::data_group group_of_set(const strata::data_group& target,
                                const wrench_parameters& parameters) {
    const auto holder = holder_of(parameters.destination_set);
    if (!holder.empty() && target.exists_group(holder))
        return target.retrieve_group(holder);
    const auto below = fmt::format("{}/{}", holder_of(parameters.source_group), holder);
    if (holder.empty() || !target.exists_group(below)) {
        throw std::runtime_error(
            fmt::format("there is no group for the set '{}'", parameters.destination_set));
    }
    return target.retrieve_group(below);
}

void copy_block(const sample_block& block, std::uint64_t first, std::size_t count,
                std::uint64_t samples, double* wrenches) {
    auto* destination = wrenches + first;
    for (const auto* vectors : {&block.force(), &block.moment(), &block.point()}) {
        for (const auto& column : *vectors) {
            std::copy_n(column.data(), count, destination);
            destination += samples;
        }
    }
}

strata::channel_buffer compute(const measured_platform& platform,
                               const wrench_parameters& parameters) {
    const auto samples = platform.samples;
    auto buffer = std::move(
        strata::channel_buffer::allocate(strata::data_type::float64, wrench_components * samples, 1)
            .front());
    auto* wrenches = reinterpret_cast<double*>(buffer.data());
    const auto block = std::make_unique<sample_block>();
    for (std::uint64_t first = 0; first < samples; first += sample_block::capacity) {
        const auto count = static_cast<std::size_t>(
            std::min<std::uint64_t>(sample_block::capacity, samples - first));
        block->load(platform, first, count);
        block->locate(platform, parameters.location, parameters.fz_threshold);
        if (parameters.in_laboratory)
            block->transform(platform.frame);
        copy_block(*block, first, count, samples, wrenches);
    }
    return buffer;
}

void evaluate_unit(const strata::data_group& target, const anvil::json& json) {
    const auto parameters = read_wrench_parameters(json);
    if (!target.exists_group(parameters.source_group)) {
        throw std::runtime_error(fmt::format("there is no platform '{}'", parameters.source_group));
    }
    const auto platform = read_platform(target.retrieve_group(parameters.source_group));
    auto group = group_of_set(target, parameters);
    const auto name = last_of(parameters.destination_set);

    std::vector buffers{compute(platform, parameters)};
    if (group.exists_set(name))
        group.delete_set(name);
    auto set = strata::create_channel_set(group, name, wrench_components, platform.samples,
                                          std::move(buffers));
    for (const auto* time : {schema::attribute::sample_rate, schema::attribute::start_time}) {
        const auto& channel = platform.channels.front();
        schema::write_number(
            set, time, schema::read_number<double>(channel.retrieve_attribute(time)).value_or(0.0));
    }
}

} // namespace

anvil::status ground_reaction_wrench::evaluate(strata::data_group& target,
                                               const anvil::json& parameters) const {
    return strata::status_of([&] { evaluate_unit(target, parameters); },
                             "A wrench cannot be computed : ");
}

} // namespace classical_mechanics
