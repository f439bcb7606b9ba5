// Decodes the data section of a C3D file, of any storage form, and does nothing else: no
// parameters, no labels, no checks. It is the yardstick of the benchmarks: what reading such a file
// costs when nothing else is asked for.
//
//     plain_decoder FILE.c3d FILE.layout REPETITIONS
//
// The answer is one line of JSON.

#include <chrono>
#include <cmath>
#include <cstdio>
#include <span>
#include <string>
#include <vector>

#include "benchmarks/measured.hpp"
#include "benchmarks/plain_trial.hpp"

namespace {

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
