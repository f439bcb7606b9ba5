// Turns a float64 array for each channel into the records of a C3D file (real numbers, Intel order)
// and writes them to a new file, blocked; header and parameters are those of the source, as they
// are. It is the yardstick of the benchmarks: what writing such a file costs when nothing else is
// asked for.
//
//     plain_writer SOURCE.c3d SOURCE.layout DESTINATION.c3d REPETITIONS [sync]
//
// With "sync" the file is brought to the medium before the clock stops. The answer is one line of
// JSON.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "benchmarks/measured.hpp"
#include "benchmarks/plain_trial.hpp"

namespace {

constexpr std::size_t bytes_per_section_block = 512;

std::vector<std::byte> head_of(const char* path, const layout& file) {
    std::vector<std::byte> head(file.data_offset);
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (pread(descriptor, head.data(), head.size(), 0) != static_cast<ssize_t>(head.size()))
        throw std::runtime_error("the source cannot be read");
    close(descriptor);
    return head;
}

void write_all(int descriptor, const std::byte* bytes, std::size_t count) {
    if (write(descriptor, bytes, count) != static_cast<ssize_t>(count))
        throw std::runtime_error("the destination cannot be written");
}

/// Where a block of frames is put together, and which ones they are.
struct frame_block {
    std::byte* bytes;
    std::size_t first, count;
};

void encode_points(const layout& file, const recording& from, const frame_block& block) {
    const auto stride = file.frame_bytes();
    for (std::size_t point = 0; point < file.points; ++point) {
        std::byte* target = block.bytes + point * file.point_bytes();
        const double* x = from.points[point].data() + block.first;
        const double* y = x + file.frames;
        const double* z = y + file.frames;
        const float* residual = from.residuals[point].data() + block.first;
        for (std::size_t frame = 0; frame < block.count; ++frame, target += stride) {
            float words[4] = {0.0F, 0.0F, 0.0F, -1.0F};
            if (!std::isnan(x[frame] + y[frame] + z[frame])) {
                words[0] = static_cast<float>(x[frame]);
                words[1] = static_cast<float>(y[frame]);
                words[2] = static_cast<float>(z[frame]);
                words[3] = residual[frame];
            }
            std::memcpy(target, words, sizeof words);
        }
    }
}

void encode_analogs(const layout& file, const recording& from, const frame_block& block) {
    const auto stride = file.frame_bytes();
    const auto sample_stride = file.channels * file.number_bytes();
    for (std::size_t channel = 0; channel < file.channels; ++channel) {
        std::byte* frame_target =
            block.bytes + file.points * file.point_bytes() + channel * file.number_bytes();
        const double* value = from.channels[channel].data() + block.first * file.ratio;
        const double offset = file.offsets[channel];
        const double factor = 1.0 / (file.scales[channel] * file.general_scale);
        for (std::size_t frame = 0; frame < block.count; ++frame, frame_target += stride) {
            std::byte* target = frame_target;
            for (std::size_t sample = 0; sample < file.ratio; ++sample, target += sample_stride) {
                const auto count = static_cast<float>(*value++ * factor + offset);
                std::memcpy(target, &count, sizeof count);
            }
        }
    }
}

void write_file(const char* path, const std::vector<std::byte>& head, const layout& file,
                const recording& from, bool sync) {
    const int descriptor = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0)
        throw std::runtime_error("the destination cannot be made");
    write_all(descriptor, head.data(), head.size());
    std::vector<std::byte> bytes(frames_per_block * file.frame_bytes());
    for (std::size_t first = 0; first < file.frames; first += frames_per_block) {
        const auto count = std::min(frames_per_block, file.frames - first);
        const frame_block block{bytes.data(), first, count};
        encode_points(file, from, block);
        encode_analogs(file, from, block);
        write_all(descriptor, bytes.data(), count * file.frame_bytes());
    }
    const auto used = file.frames * file.frame_bytes() % bytes_per_section_block;
    const std::vector<std::byte> padding((bytes_per_section_block - used) %
                                         bytes_per_section_block);
    write_all(descriptor, padding.data(), padding.size());
    if (sync && fsync(descriptor) != 0)
        throw std::runtime_error("the destination cannot be brought to the medium");
    if (close(descriptor) != 0)
        throw std::runtime_error("the destination cannot be closed");
}

void measure(const char* source, const layout& file, const char* destination,
             std::size_t repetitions, bool sync) {
    if (file.form != number_form::real)
        throw std::runtime_error("only real numbers in Intel order are written");
    const auto head = head_of(source, file);
    const auto content = decode(source, file);
    json_array seconds;
    reset_peak_memory();
    const auto before = peak_memory();
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition) {
        unlink(destination);
        const auto start = std::chrono::steady_clock::now();
        write_file(destination, head, file, content, sync);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        seconds.add(time.count());
    }
    std::printf("{\"seconds\":%s,\"peak\":%zu}\n", seconds.text().c_str(), peak_memory() - before);
}

} // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 5 && argument_count != 6) {
        std::fprintf(stderr, "usage: plain_writer SOURCE.c3d SOURCE.layout DESTINATION.c3d "
                             "REPETITIONS [sync]\n");
        return 2;
    }
    try {
        const bool sync = argument_count == 6 && std::string_view(arguments[5]) == "sync";
        measure(arguments[1], read_layout(arguments[2]), arguments[3], std::stoul(arguments[4]),
                sync);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "plain_writer: %s\n", failure.what());
        return 1;
    }
}
