#include "benchmarks/plain_trial.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

layout read_layout(const char* path) {
    std::ifstream text(path);
    layout found{};
    text >> found.points >> found.channels >> found.ratio >> found.frames >> found.data_offset;
    text >> found.general_scale;
    found.scales.resize(found.channels);
    found.offsets.resize(found.channels);
    for (std::size_t channel = 0; channel < found.channels; ++channel)
        text >> found.scales[channel] >> found.offsets[channel];
    if (!text)
        throw std::runtime_error("the layout file is not complete");
    return found;
}

namespace {

recording make_recording(const layout& file) {
    recording made;
    for (std::size_t point = 0; point < file.points; ++point) {
        made.points.emplace_back(3 * file.frames);
        made.residuals.emplace_back(file.frames);
    }
    for (std::size_t channel = 0; channel < file.channels; ++channel)
        made.channels.emplace_back(file.frames * file.ratio);
    return made;
}

/// Frames in memory, and which ones they are.
struct frame_block {
    const std::byte* bytes;
    std::size_t first, count;
};

void decode_points(const layout& file, const frame_block& block, recording& into) {
    constexpr auto missing = std::numeric_limits<double>::quiet_NaN();
    const auto stride = file.frame_bytes();
    for (std::size_t point = 0; point < file.points; ++point) {
        const std::byte* source = block.bytes + point * point_bytes;
        double* x = into.points[point].data() + block.first;
        double* y = x + file.frames;
        double* z = y + file.frames;
        float* residual = into.residuals[point].data() + block.first;
        for (std::size_t frame = 0; frame < block.count; ++frame, source += stride) {
            float words[4];
            std::memcpy(words, source, sizeof words);
            const bool is_valid = words[3] >= 0.0F;
            x[frame] = is_valid ? static_cast<double>(words[0]) : missing;
            y[frame] = is_valid ? static_cast<double>(words[1]) : missing;
            z[frame] = is_valid ? static_cast<double>(words[2]) : missing;
            residual[frame] = words[3];
        }
    }
}

void decode_analogs(const layout& file, const frame_block& block, recording& into) {
    const auto stride = file.frame_bytes();
    const auto sample_stride = file.channels * analog_bytes;
    for (std::size_t channel = 0; channel < file.channels; ++channel) {
        const std::byte* frame_source =
            block.bytes + file.points * point_bytes + channel * analog_bytes;
        double* value = into.channels[channel].data() + block.first * file.ratio;
        const double offset = file.offsets[channel];
        const double factor = file.scales[channel] * file.general_scale;
        for (std::size_t frame = 0; frame < block.count; ++frame, frame_source += stride) {
            const std::byte* source = frame_source;
            for (std::size_t sample = 0; sample < file.ratio; ++sample, source += sample_stride) {
                float count;
                std::memcpy(&count, source, sizeof count);
                *value++ = (static_cast<double>(count) - offset) * factor;
            }
        }
    }
}

} // namespace

recording decode(const char* path, const layout& file) {
    auto decoded = make_recording(file);
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        throw std::runtime_error("the file cannot be opened");
    std::vector<std::byte> bytes(frames_per_block * file.frame_bytes());
    for (std::size_t first = 0; first < file.frames; first += frames_per_block) {
        const auto count = std::min(frames_per_block, file.frames - first);
        const auto wanted = count * file.frame_bytes();
        const auto offset = static_cast<off_t>(file.data_offset + first * file.frame_bytes());
        if (pread(descriptor, bytes.data(), wanted, offset) != static_cast<ssize_t>(wanted))
            throw std::runtime_error("the file is too short");
        const frame_block block{bytes.data(), first, count};
        decode_points(file, block, decoded);
        decode_analogs(file, block, decoded);
    }
    close(descriptor);
    return decoded;
}
