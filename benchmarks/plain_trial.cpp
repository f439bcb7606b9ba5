#include "benchmarks/plain_trial.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace {

number_form form_named(const std::string& name) {
    if (name == "real")
        return number_form::real;
    if (name == "integer")
        return number_form::integer;
    if (name == "dec")
        return number_form::dec;
    if (name == "mips")
        return number_form::mips;
    throw std::runtime_error("the layout file names no form that is known");
}

} // namespace

layout read_layout(const char* path) {
    std::ifstream text(path);
    layout found{};
    std::string form;
    text >> form;
    found.form = form_named(form);
    text >> found.points >> found.channels >> found.ratio >> found.frames >> found.data_offset;
    text >> found.point_scale >> found.general_scale;
    found.scales.resize(found.channels);
    found.offsets.resize(found.channels);
    for (std::size_t channel = 0; channel < found.channels; ++channel)
        text >> found.scales[channel] >> found.offsets[channel];
    if (!text)
        throw std::runtime_error("the layout file is not complete");
    return found;
}

namespace {

/// Loads a number of one form.
struct real {
    static constexpr std::size_t bytes = 4;
    static float load(const std::byte* source) {
        float number;
        std::memcpy(&number, source, sizeof number);
        return number;
    }
};

struct integer {
    static constexpr std::size_t bytes = 2;
    static float load(const std::byte* source) {
        std::int16_t number;
        std::memcpy(&number, source, sizeof number);
        return number;
    }
};

/// The high word comes first; an exponent means a quarter of what it means in IEEE 754.
struct dec {
    static constexpr std::size_t bytes = 4;
    static float load(const std::byte* source) {
        std::uint32_t bits;
        std::memcpy(&bits, source, sizeof bits);
        return std::bit_cast<float>(std::rotl(bits, 16)) * 0.25F;
    }
};

struct mips {
    static constexpr std::size_t bytes = 4;
    static float load(const std::byte* source) {
        std::uint32_t bits;
        std::memcpy(&bits, source, sizeof bits);
        return std::bit_cast<float>(__builtin_bswap32(bits));
    }
};

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

template <typename Number>
void decode_points(const layout& file, const frame_block& block, recording& into) {
    constexpr auto missing = std::numeric_limits<double>::quiet_NaN();
    const auto stride = file.frame_bytes();
    const double scale = file.point_scale;
    for (std::size_t point = 0; point < file.points; ++point) {
        const std::byte* source = block.bytes + point * file.point_bytes();
        double* x = into.points[point].data() + block.first;
        double* y = x + file.frames;
        double* z = y + file.frames;
        float* residual = into.residuals[point].data() + block.first;
        for (std::size_t frame = 0; frame < block.count; ++frame, source += stride) {
            const float fourth = Number::load(source + 3 * Number::bytes);
            const auto coordinate = [&](std::size_t axis) {
                const auto number =
                    static_cast<double>(Number::load(source + axis * Number::bytes));
                // Reals have been multiplied already.
                const double value = Number::bytes == 2 ? number * scale : number;
                return fourth >= 0.0F ? value : missing;
            };
            x[frame] = coordinate(0);
            y[frame] = coordinate(1);
            z[frame] = coordinate(2);
            residual[frame] = fourth;
        }
    }
}

template <typename Number>
void decode_analogs(const layout& file, const frame_block& block, recording& into) {
    const auto stride = file.frame_bytes();
    const auto sample_stride = file.channels * Number::bytes;
    for (std::size_t channel = 0; channel < file.channels; ++channel) {
        const std::byte* frame_source =
            block.bytes + file.points * file.point_bytes() + channel * Number::bytes;
        double* value = into.channels[channel].data() + block.first * file.ratio;
        const double offset = file.offsets[channel];
        const double factor = file.scales[channel] * file.general_scale;
        for (std::size_t frame = 0; frame < block.count; ++frame, frame_source += stride) {
            const std::byte* source = frame_source;
            for (std::size_t sample = 0; sample < file.ratio; ++sample, source += sample_stride) {
                const auto count = static_cast<double>(Number::load(source));
                *value++ = (count - offset) * factor;
            }
        }
    }
}

template <typename Number>
void decode_block(const layout& file, const frame_block& block, recording& into) {
    decode_points<Number>(file, block, into);
    decode_analogs<Number>(file, block, into);
}

/// What decodes a block of frames of this form.
auto block_decoder(number_form form) {
    switch (form) {
    case number_form::real:
        return &decode_block<real>;
    case number_form::integer:
        return &decode_block<integer>;
    case number_form::dec:
        return &decode_block<dec>;
    case number_form::mips:
        return &decode_block<mips>;
    }
    throw std::logic_error("no such form");
}

} // namespace

recording decode(const char* path, const layout& file) {
    auto decoded = make_recording(file);
    const auto decode_frames = block_decoder(file.form);
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
        decode_frames(file, {bytes.data(), first, count}, decoded);
    }
    close(descriptor);
    return decoded;
}
