#include "plugins/c3d/frames/layout_candidates.hpp"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <optional>

namespace c3d {

namespace {

template <typename Value> void add(std::vector<Value>& values, const Value& value) {
    if (std::find(values.begin(), values.end(), value) == values.end())
        values.push_back(value);
}

/// Counts beyond what a single counts exactly are garbage.
std::optional<std::uint64_t> plausible(std::optional<std::uint64_t> count) {
    return count && *count <= 16777216 ? count : std::nullopt;
}

double rate_of(std::optional<double> rate) {
    return rate && std::isfinite(*rate) && *rate > 0.0 ? *rate : 0.0;
}

/// POINT:DATA_START, the header's copy, then the first block behind the parameters. A section
/// cannot begin inside the parameters or behind the end. With zeros before the header it is not
/// known what the pointers count from.
std::vector<std::uint64_t> data_offsets(const c3d_file& file) {
    std::vector<std::uint64_t> offsets;
    const auto consider = [&](std::uint64_t origin, std::uint64_t block) {
        if (block == 0)
            return;
        const auto offset = block_offset(origin, block);
        if (offset >= file.parameters_end && offset <= file.size)
            add(offsets, offset);
    };
    const auto from_parameters = file.parameters.count("POINT", "DATA_START").value_or(0);
    for (auto origin : {file.origin, std::uint64_t{0}}) {
        consider(origin, from_parameters);
        consider(origin, file.head.data_start);
    }
    // A pointer behind the end that nobody contradicts is that of a cut file.
    const bool agreed = from_parameters == 0 || file.head.data_start == 0 ||
                        from_parameters == file.head.data_start;
    const auto pointer = std::max<std::uint64_t>(from_parameters, file.head.data_start);
    const bool is_cut = agreed && pointer != 0 && block_offset(file.origin, pointer) > file.size;
    if (!offsets.empty() || is_cut)
        return offsets;
    const auto used_blocks = (file.parameters_end - file.origin + block_bytes - 1) / block_bytes;
    consider(file.origin, used_blocks + 1);
    return offsets;
}

std::vector<std::uint64_t> point_counts(const c3d_file& file) {
    std::vector<std::uint64_t> counts;
    if (const auto used = plausible(file.parameters.count("POINT", "USED")))
        add(counts, *used);
    add(counts, std::uint64_t{file.head.points});
    return counts;
}

/// The sign of the scale is the storage; a scale of 0 or NaN says nothing.
std::vector<sample_storage> storages(const c3d_file& file) {
    std::vector<sample_storage> result;
    const auto consider = [&](std::optional<double> scale) {
        if (scale && *scale < 0.0)
            add(result, sample_storage::real);
        if (scale && *scale > 0.0)
            add(result, sample_storage::integer);
    };
    consider(file.parameters.number("POINT", "SCALE"));
    consider(file.head.scale);
    if (result.empty())
        result = {sample_storage::real, sample_storage::integer};
    return result;
}

/// Channels × samples: from ANALOG:USED with the header's samples where they agree with the
/// header's product, else with the ratio of the rates; then what the header says by itself.
std::vector<analog_grid> analog_grids(const c3d_file& file, std::uint64_t ratio) {
    const std::uint64_t values = file.head.analog_values;
    const std::uint64_t samples = file.head.samples_per_frame;
    const auto used = plausible(file.parameters.count("ANALOG", "USED"));
    std::vector<analog_grid> grids;
    const auto consider = [&](std::uint64_t channels, std::uint64_t samples_per_frame) {
        if (samples_per_frame != 0)
            add(grids, {channels, samples_per_frame});
    };
    const auto without_channels = ratio != 0 ? ratio : std::max<std::uint64_t>(samples, 1);
    if (used == 0 || (!used && values == 0))
        consider(0, without_channels);
    if (used && *used != 0) {
        if (samples != 0 && *used * samples == values) {
            consider(*used, samples);
            if (ratio == 0 || ratio == samples)
                return grids; // nothing contradicts it, not even the length of a cut file
        }
        consider(*used, ratio);
        if (values % *used == 0)
            consider(*used, values / *used);
        consider(*used, samples);
    }
    if (values == 0) {
        consider(0, without_channels);
    } else {
        if (samples != 0 && values % samples == 0)
            consider(values / samples, samples);
        if (ratio != 0 && values % ratio == 0)
            consider(values / ratio, ratio);
        if (!used)
            consider(values, 1);
    }
    // The last resort, where neither the rates nor the header's product divide.
    if (used)
        consider(*used, 1);
    return grids;
}

} // namespace

layout_candidates candidates_of(const c3d_file& file) {
    layout_candidates result;
    result.data_offsets = data_offsets(file);
    result.points = point_counts(file);
    result.storages = storages(file);
    result.point_rate = rate_of(file.parameters.number("POINT", "RATE"));
    if (result.point_rate == 0.0)
        result.point_rate = rate_of(file.head.rate);
    result.analog_rate = rate_of(file.parameters.number("ANALOG", "RATE"));
    std::uint64_t ratio = 0;
    // The header has a word for the ratio. Rounded, not cut: rates are stored as singles.
    if (result.point_rate > 0.0 && result.analog_rate / result.point_rate < 65536.0) {
        ratio = static_cast<std::uint64_t>(std::llround(result.analog_rate / result.point_rate));
    }
    result.grids = analog_grids(file, ratio);
    return result;
}

} // namespace c3d
