#include "plugins/c3d/rotations/write_rotations.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include <strata/access/strided_read.hpp>
#include <strata/data_set.hpp>
#include <strata/data_type.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"
#include "plugins/c3d/frames/frame_layout.hpp"
#include "plugins/c3d/frames/rotation_layout.hpp"
#include "plugins/c3d/parameters/put_entries.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"
#include "plugins/c3d/rotations/read_rotations.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

/// The components of a segment, `rows` of each: those that the set holds, then invalid ones.
strata::channel_buffer lengthened(const strata::data_set& set, std::uint64_t segment,
                                  std::uint64_t held, std::uint64_t rows) {
    auto made =
        strata::channel_buffer::allocate(strata::data_type::float64, rotation_components * rows, 1)
            .front();
    auto* to = reinterpret_cast<double*>(made.data());
    for (std::uint64_t i = 0; i < rotation_components; ++i, to += rows) {
        if (!strata::read_strided(set, segment, i, 0, held, to, 1))
            throw export_error("the rotations of segment {} are no numbers", segment);
        const bool is_reliability = i + 1 == rotation_components;
        std::fill(to + held, to + rows,
                  is_reliability ? -1.0 : std::numeric_limits<double>::quiet_NaN());
    }
    return made;
}

double rate_of(const strata::data_set& set, double ratio, double point_rate) {
    const auto stored =
        schema::read_number<double>(set.retrieve_attribute(attribute::sample_rate)).value_or(0.0);
    const auto computed = ratio * point_rate;
    return stored > 0.0 && std::abs(stored - computed) <= rate_tolerance * computed ? stored
                                                                                    : computed;
}

/// A row that the file lacked is not made up: a claim of the file is no reason for any number of
/// them.
rotation_source source_of(const strata::data_set& set, std::uint64_t wanted, std::uint64_t held) {
    const auto rows = std::min(
        wanted, schema::read_number<std::uint64_t>(set.retrieve_attribute(attribute::num_samples))
                    .value_or(held));
    rotation_source source;
    source.rows = rows;
    source.is_complete = rows == wanted;
    const auto segments = static_cast<std::uint64_t>(set.shape(false).dimensions()[1]);
    for (std::uint64_t segment = 0; segment < segments; ++segment) {
        const bool is_short = rows > held;
        const auto buffer =
            is_short ? lengthened(set, segment, held, rows) : strata::share_channel(set, segment);
        const auto step = is_short ? rows : held;
        for (std::uint64_t i = 0; i < rotation_components; ++i)
            source.columns.emplace_back(buffer, i * step);
    }
    return source;
}

} // namespace

rotation_source put_rotations(parameter_tree& tree, const strata::data_group& data,
                              std::uint64_t frames, double point_rate) {
    constexpr std::uint64_t most_segments = largest_word;
    const auto set = data.exists_set(schema::name::rotations)
                         ? data.retrieve_set(schema::name::rotations)
                         : strata::data_set();
    const auto extents = set ? set.shape(false).dimensions() : std::vector<std::int64_t>{};
    if (extents.size() != 3 || extents[1] == 0) {
        if (auto* group = tree.find("ROTATION"); group && group->find("USED"))
            put_count(*group, "USED", 0);
        return {};
    }
    const auto segments = static_cast<std::uint64_t>(extents[1]);
    const auto held = static_cast<std::uint64_t>(extents[2]);
    const auto ratio =
        schema::read_number<std::uint64_t>(set.retrieve_attribute(attribute::ratio)).value_or(1);
    if (segments > most_segments)
        throw export_error("there are {} segments with rotations; a C3D file holds {}", segments,
                           most_segments);
    auto& group = tree.reach("ROTATION");
    put_count(group, "USED", segments);
    put_block(group, "DATA_START", 0); // known when all other parameters are
    put_count(group, "RATIO", ratio);
    put_real(group, "RATE",
             static_cast<float>(rate_of(set, static_cast<double>(ratio), point_rate)));
    for (const auto& [name, list] : rotation_texts) {
        auto texts = schema::read_texts(set.retrieve_attribute(name));
        texts.resize(static_cast<std::size_t>(segments));
        put_entries(tree, {"ROTATION", list}, texts, 4, surplus::kept);
    }
    return source_of(set, frames != 0 ? frames * ratio : held, held);
}

} // namespace c3d
