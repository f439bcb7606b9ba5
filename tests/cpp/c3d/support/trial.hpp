#pragma once

#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "plugins/c3d/samples/decoder.hpp"
#include "tests/cpp/c3d/support/parameter_writer.hpp"

namespace c3d_test {

/// x, y, z and the fourth word, as the file holds them: reals or, for integer storage, integers.
using stored_sample = std::array<float, 4>;

/// A C3D file as its content; every test changes what it is about.
struct trial {
    c3d::number_format format = c3d::number_format::intel;
    c3d::sample_storage storage = c3d::sample_storage::real;
    float scale = 0.1F;
    float rate = 100.0F;
    int first_frame = 1;
    std::vector<std::string> labels = {"LASI"};
    std::vector<stored_sample> samples = {{1, 2, 3, 0}, {4, 5, 6, 0}}; ///< frame by frame
    std::vector<std::string> analog_labels;
    int samples_per_frame = 1;
    /// Frame by frame, in it sample by sample, in it channel by channel.
    std::vector<float> analogs;

    std::set<std::string> left_out;                         ///< parameters, as "POINT:FRAMES"
    std::function<void(parameter_writer&)> more_parameters; ///< behind all others: they win
    std::map<int, int> header_words;                        ///< by number of the word
    std::size_t leading_zeros = 0;

    /// Groups of the parameters written by default.
    static constexpr int point = 1;
    static constexpr int analog = 2;

    [[nodiscard]] int frames() const;
    [[nodiscard]] byte_vector bytes() const;

  private:
    [[nodiscard]] byte_vector header(int data_block) const;
    [[nodiscard]] byte_vector parameters(int data_block) const;
    [[nodiscard]] byte_vector data() const;
    [[nodiscard]] byte_vector number(float value) const;
};

/// Bytes until a block ends.
void pad_block(byte_vector& bytes);

} // namespace c3d_test
