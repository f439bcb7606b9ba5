// Decodes the data section of a C3D file (real numbers, Intel order) and does nothing else: no
// parameters, no labels, no checks. It is the yardstick of the benchmarks: what reading such a file
// costs when nothing else is asked for.
//
//     plain_decoder FILE.c3d FILE.layout REPETITIONS
//
// The layout file holds points, channels, samples of a channel per frame, frames and the offset of
// the data in bytes; the general scale; scale and offset of each channel. The answer is one line of
// JSON.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <limits>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::size_t frames_per_block = 64;
constexpr std::size_t point_bytes = 16; // x, y, z and the fourth word
constexpr std::size_t analog_bytes = 4;

/// Where the samples lie and what turns analog counts into values.
struct layout {
    std::size_t points, channels, ratio, frames, data_offset;
    double general_scale;
    std::vector<double> scales, offsets; ///< one a channel

    [[nodiscard]] std::size_t frame_bytes() const {
        return points * point_bytes + channels * ratio * analog_bytes;
    }
};

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

template <typename Element> class buffer {
  public:
    explicit buffer(std::size_t count)
        : elements_(std::make_unique_for_overwrite<Element[]>(count)), count_(count) {}
    [[nodiscard]] Element* data() const { return elements_.get(); }
    [[nodiscard]] std::span<const Element> view() const { return {elements_.get(), count_}; }

  private:
    std::unique_ptr<Element[]> elements_; // not initialised: every element is written
    std::size_t count_;
};

/// Everything in the file, a buffer a channel.
struct recording {
    std::vector<buffer<double>> points;   ///< x of all frames, then y, then z
    std::vector<buffer<float>> residuals; ///< fourth words
    std::vector<buffer<double>> channels;
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

/// Highest memory use of the process so far, in bytes.
std::size_t peak_memory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::stoul(line.substr(6)) * 1024;
    throw std::runtime_error("no VmHWM in /proc/self/status");
}

/// Lets the peak start again from what is in use now.
void reset_peak_memory() { std::ofstream("/proc/self/clear_refs") << "5"; }

/// Numbers as a JSON array.
class json_array {
  public:
    void add(double number) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%.17g", number);
        if (!text_.empty())
            text_ += ',';
        text_ += digits;
    }
    [[nodiscard]] std::string text() const { return "[" + text_ + "]"; }

  private:
    std::string text_;
};

/// The fingerprints of column_sums.py.
struct column_sums {
    json_array counts, weighted;

    void add(std::span<const double> column) {
        std::size_t count = 0;
        double sum = 0.0;
        for (std::size_t row = 0; row < column.size(); ++row) {
            if (std::isnan(column[row]))
                continue;
            ++count;
            sum += static_cast<double>(row % 7 + 1) * column[row];
        }
        counts.add(static_cast<double>(count));
        weighted.add(sum);
    }
    [[nodiscard]] std::string json() const {
        return R"({"counts":)" + counts.text() + R"(,"weighted":)" + weighted.text() + "}";
    }
};

std::string sums_of(const layout& file, const recording& decoded) {
    column_sums points, analogs;
    for (const auto& point : decoded.points)
        for (std::size_t axis = 0; axis < 3; ++axis)
            points.add(point.view().subspan(axis * file.frames, file.frames));
    for (const auto& channel : decoded.channels)
        analogs.add(channel.view());
    return R"({"points":)" + points.json() + R"(,"analogs":)" + analogs.json() + "}";
}

void measure(const char* path, const layout& file, std::size_t repetitions) {
    // Nothing else is allocated between repetitions: what stays behind on the heap would keep the C
    // library from giving memory back, and spare this program alone the page faults of fresh
    // memory.
    std::vector<double> taken;
    taken.reserve(repetitions);
    reset_peak_memory();
    const auto before = peak_memory();
    std::size_t peak = 0;
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition) {
        const auto start = std::chrono::steady_clock::now();
        const auto decoded = decode(path, file);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        taken.push_back(time.count());
        if (repetition == 0)
            peak = peak_memory() - before;
    }
    json_array seconds;
    for (const double time : taken)
        seconds.add(time);
    const auto sums = sums_of(file, decode(path, file));
    std::printf("{\"seconds\":%s,\"peak_read\":%zu,\"peak\":%zu,\"sums\":%s}\n",
                seconds.text().c_str(), peak, peak, sums.c_str());
}

} // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 4) {
        std::fprintf(stderr, "usage: plain_decoder FILE.c3d FILE.layout REPETITIONS\n");
        return 2;
    }
    try {
        measure(arguments[1], read_layout(arguments[2]), std::stoul(arguments[3]));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "plain_decoder: %s\n", failure.what());
        return 1;
    }
}
