#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

inline constexpr std::size_t frames_per_block = 64;
inline constexpr std::size_t point_bytes = 16; // x, y, z and the fourth word
inline constexpr std::size_t analog_bytes = 4;

/// Where the samples of a file lie and what turns analog counts into values.
struct layout {
    std::size_t points, channels, ratio, frames, data_offset;
    double general_scale;
    std::vector<double> scales, offsets; ///< one a channel

    [[nodiscard]] std::size_t frame_bytes() const {
        return points * point_bytes + channels * ratio * analog_bytes;
    }
};

/// What a layout file says: points, channels, samples of a channel per frame, frames and the offset
/// of the data in bytes; the general scale; scale and offset of each channel.
[[nodiscard]] layout read_layout(const char* path);

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

/// Reads the samples and does nothing else: no parameters, no labels, no checks.
[[nodiscard]] recording decode(const char* path, const layout& file);
