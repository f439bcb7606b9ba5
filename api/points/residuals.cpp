#include "store/python.hpp"

#include "api/points/residuals.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include <strata/access/strided_read.hpp>

#include "acquisition/channels/channels.hpp"
#include "api/channels/channel_handle.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::points {

namespace attribute = schema::attribute;

namespace {

constexpr int cameras_of_word = 7;
constexpr float not_seen = -1.0F;

std::uint64_t frames_of(const strata::data_set& point) {
    return static_cast<std::uint64_t>(point.shape(false).dimensions().back());
}

/// Calls `visit` with the index of each frame in which a coordinate is missing.
template <typename Visit> void for_each_missing(const strata::data_set& point, Visit visit) {
    const auto frames = frames_of(point);
    std::vector<double> values(frames);
    for (std::uint64_t component = 0; component < 3; ++component) {
        if (!strata::read_strided(point, 0, component, 0, frames, values.data(), 1))
            throw_system_error("The samples of a point cannot be read");
        for (std::size_t i = 0; i < frames; ++i) {
            if (std::isnan(values[i]))
                visit(i);
        }
    }
}

/// The words of a point, one a frame: −1 where a coordinate is missing.
std::vector<float> words_of(const strata::data_store& acquisition, const strata::data_set& point) {
    if (components_of(channels::holder_of(acquisition, point)) != 3)
        throw swig_error(error_code::value, "an analog channel has no residuals");
    auto words = read_vector<float>(point.retrieve_attribute(attribute::residuals));
    words.resize(frames_of(point), 0.0F);
    for_each_missing(point, [&](std::size_t i) { words[i] = not_seen; });
    return words;
}

/// Units of points that one step of a residual is.
double residual_step(const strata::data_group& root) {
    if (!root.exists_group(schema::header))
        return 1.0;
    const auto header = root.retrieve_group(schema::header);
    const auto scale =
        std::abs(read<double>(header.retrieve_attribute(attribute::point_scale), 1.0));
    return std::isfinite(scale) && scale != 0.0 ? scale : 1.0;
}

/// Whether a number is a word; some writers store the residual itself instead.
bool is_word(float number) {
    constexpr float words = 32768.0F;
    return number >= 0.0F && number < words && number == std::floor(number);
}

double residual_of(float word, double step) {
    if (!(word >= 0.0F))
        return -1.0;
    if (!is_word(word))
        return static_cast<double>(word);
    return static_cast<double>(static_cast<std::uint32_t>(word) & 0xFFU) * step;
}

std::uint32_t mask_of(float word) {
    return is_word(word) ? static_cast<std::uint32_t>(word) >> 8U : 0U;
}

/// A word whose residual counts steps `factor` times as small.
float rescaled(float word, double factor) {
    constexpr double most = 255.0;
    if (factor == 1.0 || !is_word(word))
        return word;
    const auto bits = static_cast<std::uint32_t>(word);
    const auto steps = std::min(std::round(static_cast<double>(bits & 0xFFU) * factor), most);
    return static_cast<float>((bits & ~0xFFU) + static_cast<std::uint32_t>(steps));
}

/// Whether a word has a residual above 0.
bool counts_steps(float word) {
    return is_word(word) && (static_cast<std::uint32_t>(word) & 0xFFU) != 0U;
}

/// Whether nothing counts steps yet: the acquisition was not read, or has this point alone.
bool is_free_to_count(const strata::data_group& root) {
    if (!retrieve_group(root, schema::header).exists_attribute(attribute::point_scale))
        return true;
    std::size_t points = 0;
    for (const auto& group : point_groups(root))
        points += sets_of(group).size();
    return points == 1;
}

/// Makes the acquisition count residuals in steps of `step`.
void count_in(const strata::data_group& root, double step) {
    write_or_create(retrieve_group(root, schema::header), attribute::point_scale,
                    static_cast<float>(step));
}

/// A residual that is stored itself, moved a hair where it would read as a word.
float distinct_from_words(float residual) {
    return is_word(residual) ? std::nextafter(residual, residual + 1.0F) : residual;
}

/// Multiplies the residuals of a point that are stored themselves.
void multiply_stored_residuals(const strata::data_set& point, double factor) {
    if (!point.exists_attribute(attribute::residuals))
        return;
    auto stored = point.retrieve_attribute(attribute::residuals);
    auto numbers = read_vector<float>(stored);
    bool any = false;
    for (auto& number : numbers) {
        if (number > 0.0F && !is_word(number)) {
            number = distinct_from_words(static_cast<float>(number * factor));
            any = true;
        }
    }
    if (any)
        write_vector(stored, numbers);
}

} // namespace

py_ref residuals(strata::data_store acquisition, strata::data_set point) {
    const auto words = words_of(acquisition, point);
    const auto step = residual_step(acquisition.root());
    std::array<npy_intp, 1> shape{static_cast<npy_intp>(words.size())};
    auto array = py_ref::checked(PyArray_SimpleNew(1, shape.data(), NPY_DOUBLE));
    auto* values = static_cast<double*>(PyArray_DATA(array.array()));
    for (std::size_t i = 0; i < words.size(); ++i)
        values[i] = residual_of(words[i], step);
    PyArray_CLEARFLAGS(array.array(), NPY_ARRAY_WRITEABLE);
    return array;
}

py_ref cameras(strata::data_store acquisition, strata::data_set point) {
    const auto words = words_of(acquisition, point);
    std::array<npy_intp, 2> shape{static_cast<npy_intp>(words.size()), cameras_of_word};
    auto array = py_ref::checked(PyArray_SimpleNew(2, shape.data(), NPY_BOOL));
    auto* flags = static_cast<npy_bool*>(PyArray_DATA(array.array()));
    for (const float word : words) {
        const auto mask = mask_of(word);
        for (int camera = 0; camera < cameras_of_word; ++camera)
            *flags++ = static_cast<npy_bool>((mask >> static_cast<unsigned>(camera)) & 1U);
    }
    PyArray_CLEARFLAGS(array.array(), NPY_ARRAY_WRITEABLE);
    return array;
}

void multiply_residuals(strata::data_store acquisition, double factor) {
    const auto root = acquisition.root();
    const auto step = residual_step(root) * factor;
    for (const auto& group : point_groups(root)) {
        for (const auto& point : sets_of(group))
            multiply_stored_residuals(point, factor);
    }
    count_in(root, step);
}

void carry_residuals(strata::data_store acquisition, strata::data_set point,
                     strata::data_store source, strata::data_set original) {
    auto words = words_of(source, original);
    const bool has_words = original.exists_attribute(attribute::residuals);
    if (!has_words || words.size() != words_of(acquisition, point).size())
        return;
    const auto root = acquisition.root();
    const auto step = residual_step(source.root());
    if (std::any_of(words.begin(), words.end(), counts_steps) && is_free_to_count(root))
        count_in(root, step);
    const auto factor = step / residual_step(root);
    for (auto& word : words)
        word = rescaled(std::max(word, 0.0F), factor);
    for_each_missing(point, [&](std::size_t i) { words[i] = not_seen; });
    if (point.exists_attribute(attribute::residuals))
        point.delete_attribute(attribute::residuals);
    const strata::data_shape shape({static_cast<std::int64_t>(words.size())}, false);
    write_vector(point.create_attribute(attribute::residuals, shape, strata::data_type::float32),
                 words);
}

} // namespace mox::points
