#include "plugins/c3d/dec_range.hpp"

#include <cstddef>
#include <string>

#include <fmt/format.h>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/frames/rotation_layout.hpp"
#include "plugins/c3d/samples/sample_survey.hpp"

namespace c3d {

namespace {

bool is_held(const sample_survey& found) {
    return found.lowest > found.highest || (holds_real(number_format::dec, found.lowest) &&
                                            holds_real(number_format::dec, found.highest));
}

void require_held(const std::string& owner, bool held) {
    if (!held)
        throw export_error("{} has a value that is too large for a C3D file of DEC numbers, which "
                           "go up to 1.7e38",
                           owner);
}

} // namespace

void require_dec_range(const frame_sources& frames, std::span<const analog_column> channels,
                       const rotation_source& rotations) {
    if (frames.form.storage == sample_storage::real) {
        for (const auto& point : frames.points) {
            for (const auto& coordinate : point.coordinates) {
                require_held(fmt::format("the point '{}'", point.name),
                             is_held(survey(coordinate, frames.frames)));
            }
        }
        for (std::size_t i = 0; i < channels.size(); ++i) {
            const auto found = survey(frames.channels[i], frames.frames * frames.samples_per_frame);
            require_held(fmt::format("the analog channel '{}'", channels[i].label),
                         is_held(found) && !found.any_infinite);
        }
    }
    for (std::size_t i = 0; i < rotations.columns.size(); ++i) {
        const auto found = survey(rotations.columns[i], rotations.rows);
        require_held(fmt::format("segment {} of the rotations", i / rotation_components + 1),
                     is_held(found) && !found.any_infinite);
    }
}

} // namespace c3d
