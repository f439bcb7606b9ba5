#include "store/python.hpp"

#include "api/devices/set_rotation.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>

#include <fmt/format.h>
#include <strata/access/draft_set.hpp>
#include <strata/data_set.hpp>

#include "acquisition/time_base/resize_channels.hpp"
#include "api/channels/matrix_check.hpp"
#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::devices {

namespace attribute = schema::attribute;

namespace {

constexpr std::size_t matrix_edge = 4;
constexpr std::size_t matrix_elements = matrix_edge * matrix_edge;
constexpr std::size_t raw_components = matrix_elements + 1; // and the reliability
constexpr float unseen = -1.0F;

/// The rotations of a segment as the store has them: all samples of an element behind those of the
/// element before, column by column, then the reliabilities.
class segment_samples {
  public:
    segment_samples(std::span<const double> rows, std::vector<float> reliabilities)
        : reliabilities_(std::move(reliabilities)), elements_(rows.size()) {
        const auto samples = reliabilities_.size();
        for (std::size_t sample = 0; sample < samples; ++sample)
            put(sample, rows.subspan(sample * matrix_elements, matrix_elements));
    }

    [[nodiscard]] const std::vector<double>& elements() const noexcept { return elements_; }
    [[nodiscard]] const std::vector<float>& reliabilities() const noexcept {
        return reliabilities_;
    }

  private:
    void put(std::size_t sample, std::span<const double> matrix) {
        const auto samples = reliabilities_.size();
        const bool is_seen =
            std::ranges::none_of(matrix, [](double element) { return std::isnan(element); });
        auto& reliability = reliabilities_[sample];
        if (!is_seen)
            reliability = unseen;
        else if (!(reliability >= 0.0F))
            reliability = 0.0F;
        for (std::size_t i = 0; i < matrix_elements; ++i) {
            const auto row = i % matrix_edge;
            const auto column = i / matrix_edge;
            elements_[i * samples + sample] = is_seen ? matrix[matrix_edge * row + column]
                                                      : std::numeric_limits<double>::quiet_NaN();
        }
    }

    std::vector<float> reliabilities_;
    std::vector<double> elements_;
};

[[noreturn]] void throw_no_rotations(const std::string& label) {
    throw_runtime_error(fmt::format("There are no rotations of a segment '{}'", label));
}

/// RuntimeError without such a segment.
strata::data_set rotations_of_segment(const strata::data_group& root, const std::string& label) {
    if (!root.exists_group(schema::segments))
        throw_no_rotations(label);
    const auto segments = root.retrieve_group(schema::segments);
    // Not looked up by path: a label is one name, whatever separators it has.
    const auto names = segments.list_group_children_name();
    if (std::ranges::find(names, label) == names.end())
        throw_no_rotations(label);
    const auto segment = segments.retrieve_group(label);
    if (!segment.exists_set(schema::name::segment_rotations))
        throw_no_rotations(label);
    return segment.retrieve_set(schema::name::segment_rotations);
}

strata::data_set raw_set(const strata::data_group& root) {
    return root.exists_set(schema::rotations) ? root.retrieve_set(schema::rotations)
                                              : strata::data_set();
}

/// Which segment of the file's own rotations has a label; nothing when they do not have it.
std::optional<std::uint64_t> raw_segment(const strata::data_set& raw, const std::string& label) {
    if (!raw)
        return std::nullopt;
    const auto shape = raw.shape(false);
    const auto& extents = shape.dimensions();
    if (extents.size() != 3 || extents[0] != static_cast<std::int64_t>(raw_components))
        return std::nullopt;
    auto labels = schema::read_texts(raw.retrieve_attribute(attribute::labels));
    labels.resize(static_cast<std::size_t>(extents[1]));
    const auto names = schema::distinct_names(labels);
    const auto found = std::ranges::find(names, label);
    if (found == names.end())
        return std::nullopt;
    return static_cast<std::uint64_t>(found - names.begin());
}

void write_reliabilities(strata::data_set set, const std::vector<float>& reliabilities) {
    if (set.exists_attribute(attribute::reliability))
        set.delete_attribute(attribute::reliability);
    const strata::data_shape shape({static_cast<std::int64_t>(reliabilities.size())}, false);
    write_vector(set.create_attribute(attribute::reliability, shape, strata::data_type::float32),
                 reliabilities);
}

/// Gives the file's own rotations `samples` samples; those that they lacked are not reliable.
void lengthen(strata::data_set raw, std::uint64_t samples) {
    const auto held = raw.shape(false).dimensions();
    const auto segments = static_cast<std::uint64_t>(held[1]);
    const auto first = static_cast<std::uint64_t>(held[2]);
    const std::array<std::uint64_t, 3> extent{raw_components, segments, samples};
    raw.resize(extent.data(), extent.size());
    if (first >= samples)
        return;
    fill_with_nan(raw, first);
    const auto count = samples - first;
    const std::array<std::uint64_t, 6> box{matrix_elements, 1, 0, segments, first, count};
    write_vector(raw.select(box.data(), box.size(), true),
                 std::vector<double>(static_cast<std::size_t>(segments * count), unseen));
}

void write_raw(strata::data_set raw, std::uint64_t segment, const segment_samples& content) {
    const std::uint64_t samples = content.reliabilities().size();
    if (static_cast<std::uint64_t>(raw.shape(false).dimensions()[2]) != samples)
        lengthen(raw, samples);
    const std::array<std::uint64_t, 6> elements{0, matrix_elements, segment, 1, 0, samples};
    write_vector(raw.select(elements.data(), elements.size(), true), content.elements());
    const std::array<std::uint64_t, 6> trust{matrix_elements, 1, segment, 1, 0, samples};
    write_vector(raw.select(trust.data(), trust.size(), true), content.reliabilities());
}

/// RuntimeError unless the set holds square matrices.
std::uint64_t samples_of_rotations(const strata::data_set& set, const std::string& label) {
    const auto shape = set.shape(false);
    const auto& extents = shape.dimensions();
    constexpr auto edge_of_set = static_cast<std::int64_t>(matrix_edge);
    if (extents.size() != 3 || extents[0] != edge_of_set || extents[1] != edge_of_set)
        throw_runtime_error(fmt::format("The segment '{}' holds no matrices", label));
    return static_cast<std::uint64_t>(extents[2]);
}

} // namespace

std::vector<std::string> rotation_labels(strata::data_store acquisition) {
    std::vector<std::string> labels;
    const auto root = acquisition.root();
    if (!root.exists_group(schema::segments))
        return labels;
    const auto segments = root.retrieve_group(schema::segments);
    for (auto& name : segments.list_group_children_name()) {
        if (segments.retrieve_group(name).exists_set(schema::name::segment_rotations))
            labels.push_back(std::move(name));
    }
    return labels;
}

py_ref rotation_ratio(strata::data_store acquisition) {
    const auto raw = raw_set(acquisition.root());
    const auto ratio = raw ? read<std::int32_t>(raw.retrieve_attribute(attribute::ratio), 1) : 1;
    return py_ref::checked(PyLong_FromLong(ratio));
}

py_ref rotation_samples(strata::data_store acquisition, const std::string& label) {
    const auto set = rotations_of_segment(acquisition.root(), label);
    return py_ref::checked(PyLong_FromUnsignedLongLong(samples_of_rotations(set, label)));
}

void set_rotation(strata::data_store acquisition, const std::string& label, PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto root = acquisition.root();
    const auto set = rotations_of_segment(root, label);
    const auto samples = samples_of_rotations(set, label);
    const auto rows = checked_matrix(array, samples, 1, matrix_elements);
    auto reliabilities = read_vector<float>(set.retrieve_attribute(attribute::reliability));
    reliabilities.resize(static_cast<std::size_t>(samples), 0.0F);
    const segment_samples content(
        {static_cast<const double*>(PyArray_DATA(rows.array())), samples * matrix_elements},
        std::move(reliabilities));

    // Both are complete before either shows.
    const auto draft = strata::draft_of(set);
    write_vector(select_all(draft), content.elements());
    write_reliabilities(draft, content.reliabilities());
    const auto raw = raw_set(root);
    const auto segment = raw_segment(raw, label);
    if (segment) {
        const auto raw_draft = strata::draft_of(raw);
        write_raw(raw_draft, *segment, content);
        strata::exchange_content(raw, raw_draft);
    }
    strata::exchange_content(set, draft);
}

} // namespace mox::devices
