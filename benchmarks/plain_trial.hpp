#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

inline constexpr std::size_t frames_per_block = 64;
/// How a file stores a sample, as the layout file names it.
enum class number_form { real, integer, dec, mips };

/// Where the samples of a file lie and what turns them into values.
struct layout {
    number_form form;
    std::size_t points, channels, ratio, frames, data_offset;
    double point_scale; ///< of integers
    double general_scale;
    std::vector<double> scales, offsets; ///< one a channel

    [[nodiscard]] std::size_t number_bytes() const { return form == number_form::integer ? 2 : 4; }
    [[nodiscard]] std::size_t point_bytes() const {
        return 4 * number_bytes(); // x, y, z and the fourth word
    }
    [[nodiscard]] std::size_t frame_bytes() const {
        return points * point_bytes() + channels * ratio * number_bytes();
    }
};

/// What a layout file says: the form; points, channels, samples of a channel per frame, frames and
/// the offset of the data in bytes; the scale of points and the general scale; scale and offset of
/// each channel.
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
