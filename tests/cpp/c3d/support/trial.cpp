#include "tests/cpp/c3d/support/trial.hpp"

#include <algorithm>

namespace c3d_test {

using c3d::sample_storage;

void pad_block(byte_vector& bytes) { bytes.resize((bytes.size() + 511) / 512 * 512); }

int trial::frames() const {
    if (!labels.empty())
        return static_cast<int>(samples.size() / labels.size());
    if (analog_labels.empty())
        return 0;
    const auto values = analog_labels.size() * static_cast<std::size_t>(samples_per_frame);
    return static_cast<int>(analogs.size() / values);
}

byte_vector trial::number(float value) const {
    return storage == sample_storage::real ? real(format, value)
                                           : word(format, static_cast<int>(value));
}

byte_vector trial::header(int data_block) const {
    byte_vector block(512);
    const auto put = [&](int word_number, const byte_vector& bytes) {
        std::copy(bytes.begin(), bytes.end(), block.begin() + 2 * (word_number - 1));
    };
    const auto channels = static_cast<int>(analog_labels.size());
    block[0] = std::byte{2};
    block[1] = std::byte{0x50};
    put(2, word(format, static_cast<int>(labels.size())));
    put(3, word(format, channels * samples_per_frame));
    put(4, word(format, first_frame));
    put(5, word(format, std::min(first_frame + frames() - 1, 65535)));
    put(7, real(format, storage == sample_storage::real ? -scale : scale));
    put(9, word(format, data_block));
    put(10, word(format, samples_per_frame));
    put(11, real(format, rate));
    put(150, word(format, 12345));
    for (const auto& [number_of_word, value] : header_words)
        put(number_of_word, word(format, value));
    return block;
}

byte_vector trial::parameters(int data_block) const {
    parameter_writer writer(format);
    const auto has = [&](const char* name) { return !left_out.contains(name); };
    const auto channels = static_cast<int>(analog_labels.size());
    if (has("POINT"))
        writer.group(point, "POINT");
    if (has("POINT:USED"))
        writer.words(point, "USED", {static_cast<int>(labels.size())});
    if (has("POINT:SCALE")) {
        writer.reals(point, "SCALE", {storage == sample_storage::real ? -scale : scale});
    }
    if (has("POINT:RATE"))
        writer.reals(point, "RATE", {rate});
    if (has("POINT:DATA_START"))
        writer.words(point, "DATA_START", {data_block});
    if (has("POINT:FRAMES"))
        writer.words(point, "FRAMES", {std::min(frames(), 65535)});
    if (has("POINT:LABELS"))
        writer.texts(point, "LABELS", labels, 8);
    if (has("ANALOG"))
        writer.group(analog, "ANALOG");
    if (has("ANALOG:USED"))
        writer.words(analog, "USED", {channels});
    if (has("ANALOG:RATE")) {
        writer.reals(analog, "RATE", {rate * static_cast<float>(samples_per_frame)});
    }
    if (channels > 0 && has("ANALOG:LABELS"))
        writer.texts(analog, "LABELS", analog_labels, 8);
    if (more_parameters)
        more_parameters(writer);
    return writer.section();
}

byte_vector trial::data() const {
    byte_vector bytes;
    const auto points = labels.size();
    const auto values = analog_labels.size() * static_cast<std::size_t>(samples_per_frame);
    for (std::size_t frame = 0; frame < static_cast<std::size_t>(frames()); ++frame) {
        for (std::size_t i = 0; i < points; ++i) {
            for (float value : samples[frame * points + i])
                append(bytes, number(value));
        }
        for (std::size_t i = 0; i < values; ++i)
            append(bytes, number(analogs[frame * values + i]));
    }
    pad_block(bytes);
    return bytes;
}

byte_vector trial::bytes() const {
    const auto section_blocks = static_cast<int>(parameters(1).size() / 512);
    byte_vector file(leading_zeros);
    append(file, header(2 + section_blocks));
    append(file, parameters(2 + section_blocks));
    append(file, data());
    return file;
}

} // namespace c3d_test
