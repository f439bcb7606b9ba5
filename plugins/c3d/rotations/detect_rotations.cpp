#include "plugins/c3d/rotations/detect_rotations.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include <strata/data_set.hpp>
#include <strata/plugin/channel_buffer.hpp>
#include <strata/plugin/status_of.hpp>

#include "plugins/c3d/rotations/read_rotations.hpp"
#include "plugins/c3d/samples/buffer_elements.hpp"
#include "schema/channel_names.hpp"
#include "schema/computations.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "schema/unit_parameters.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace argument = schema::argument;

namespace attribute = schema::attribute;

namespace {

constexpr std::size_t matrix_edge = 4;
constexpr std::size_t reliability = matrix_edge * matrix_edge;

/// One segment, ready to be given to the store.
struct segment {
    /// By matrix row: all samples of column 0, then of column 1 and so on.
    std::vector<strata::channel_buffer> rows;
    strata::channel_buffer reliabilities;
};

std::vector<float> components_of(const strata::data_set& rotations, std::uint64_t index,
                                 std::uint64_t samples) {
    std::vector<float> components(static_cast<std::size_t>(rotation_components * samples));
    const std::array<std::uint64_t, 6> box = {0, rotation_components, index, 1, 0, samples};
    auto selection = rotations.select(box.data(), box.size(), true);
    if (samples != 0 &&
        (!selection || !selection.read_value(components.data(), strata::data_type::float32))) {
        throw std::runtime_error(fmt::format("the rotations of segment {} cannot be read", index));
    }
    return components;
}

segment make_segment(std::span<const float> components, std::size_t samples) {
    segment result;
    result.rows = strata::channel_buffer::allocate(strata::data_type::float32,
                                                   matrix_edge * samples, matrix_edge);
    result.reliabilities =
        strata::channel_buffer::allocate(strata::data_type::float32, samples, 1).front();
    const auto trust = components.subspan(reliability * samples, samples);
    const auto kept = floats_of(result.reliabilities);
    for (std::size_t i = 0; i < samples; ++i)
        kept[i] = trust[i];
    for (std::size_t component = 0; component < reliability; ++component) {
        const auto column = component / matrix_edge;
        const auto row = component % matrix_edge;
        const auto from = components.subspan(component * samples, samples);
        const auto to = floats_of(result.rows[row]).subspan(column * samples, samples);
        for (std::size_t i = 0; i < samples; ++i) {
            // Like a residual: negative where the segment was not seen. NaN is no reliability
            // either.
            to[i] = trust[i] >= 0.0F ? from[i] : std::numeric_limits<float>::quiet_NaN();
        }
    }
    return result;
}

/// The importer's set, wherever `source` begins.
strata::data_set find_rotations(strata::data_group& source) {
    for (const auto* folder : {schema::name::data, schema::data}) {
        const auto path = fmt::format("{}/{}", folder, schema::name::rotations);
        if (source.exists_set(path))
            return source.retrieve_set(path);
    }
    return {};
}

void create_segment(strata::data_group& segments, const std::string& name, const std::string& label,
                    const strata::data_set& rotations, std::uint64_t samples, segment content) {
    auto group = segments.create_group(name);
    auto set = strata::create_channel_set(group, schema::name::segment_rotations, matrix_edge,
                                          samples, std::move(content.rows));
    schema::write_text(set, attribute::label, label);
    for (const auto* time : {attribute::sample_rate, attribute::start_time}) {
        schema::write_number(
            set, time,
            schema::read_number<double>(rotations.retrieve_attribute(time)).value_or(0.0));
    }
    strata::create_row_attribute(set, attribute::reliability, std::move(content.reliabilities));
}

void detect(strata::data_group& target, const anvil::json& parameters) {
    const auto source_path =
        schema::text_parameter(parameters, detect_rotations::id, argument::source_group);
    const auto destination = fmt::format(
        "{}/{}",
        schema::text_parameter(parameters, detect_rotations::id, argument::destination_group),
        schema::name::segments);
    strata::data_set rotations;
    if (target.exists_group(source_path)) {
        auto source = target.retrieve_group(source_path);
        rotations = find_rotations(source);
    }
    std::vector<std::string> labels;
    std::vector<segment> content;
    std::uint64_t samples = 0;
    if (rotations) {
        const auto extents = rotations.shape(false).dimensions();
        if (extents.size() != 3 || extents[0] != static_cast<std::int64_t>(rotation_components)) {
            throw std::runtime_error(
                fmt::format("the set '{}' has not the shape {{{}, segments, samples}}",
                            schema::name::rotations, rotation_components));
        }
        samples = static_cast<std::uint64_t>(extents[2]);
        labels = schema::read_texts(rotations.retrieve_attribute(attribute::labels));
        labels.resize(static_cast<std::size_t>(extents[1]));
        for (std::size_t i = 0; i < labels.size(); ++i) {
            content.push_back(make_segment(components_of(rotations, i, samples),
                                           static_cast<std::size_t>(samples)));
        }
    }
    if (target.exists_group(destination))
        target.delete_group(destination);
    auto segments = target.create_group(destination);
    const auto names = schema::distinct_names(labels);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        create_segment(segments, names[i], labels[i], rotations, samples, std::move(content[i]));
    }
}

} // namespace

anvil::status detect_rotations::evaluate(strata::data_group& target,
                                         const anvil::json& parameters) const {
    return strata::status_of([&] { detect(target, parameters); });
}

} // namespace c3d
