#include "acquisition/time_base/resize_channels.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <vector>

#include <strata/access/set_count.hpp>
#include <strata/data_store.hpp>

#include "acquisition/channels/channels.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

namespace {

/// What a sample's residual takes while it moves, in doubles; generously.
constexpr std::uint64_t elements_of_residuals = 1;

void resize_device_group(strata::data_group group, std::uint64_t samples) {
    const auto components = components_of(group);
    const std::array<std::uint64_t, 3> extent{components, 1, samples};
    for (auto set : sets_of(group)) {
        const auto held = static_cast<std::uint64_t>(set.shape(false).dimensions().back());
        set.resize(extent.data(), extent.size());
        if (components == 3 && samples > held)
            fill_with_nan(set, held);
        resize_reliabilities(set, attribute::residuals, samples);
    }
    write_or_create(group, attribute::num_samples, static_cast<std::int64_t>(samples));
}

} // namespace

void fill_with_nan(const strata::data_set& set, std::uint64_t first) {
    constexpr std::uint64_t block = 4096;
    const auto shape = set.shape(false);
    const auto components = static_cast<std::uint64_t>(shape.dimensions()[0]);
    const auto channels = static_cast<std::uint64_t>(shape.dimensions()[1]);
    const auto samples = static_cast<std::uint64_t>(shape.dimensions()[2]);
    std::vector<double> values;
    for (auto at = first; at < samples; at += block) {
        const auto count = std::min(block, samples - at);
        const std::array<std::uint64_t, 6> box{0, components, 0, channels, at, count};
        values.assign(components * channels * count, std::numeric_limits<double>::quiet_NaN());
        write_vector(set.select(box.data(), box.size(), true), values);
    }
}

void resize_reliabilities(strata::data_set set, const char* name, std::uint64_t samples) {
    if (!set.exists_attribute(name))
        return;
    auto values = read_vector<float>(set.retrieve_attribute(name));
    values.resize(samples, -1.0F);
    set.delete_attribute(name);
    auto created =
        set.create_attribute(name, strata::data_shape({static_cast<std::int64_t>(samples)}, false),
                             strata::data_type::float32);
    write_vector(created, values);
}

void require_memory(double elements) {
    constexpr double most = 1e17; // beyond it no machine could address them
    if (!(elements < most))
        throw std::bad_alloc();
    const auto count = static_cast<std::int64_t>(elements);
    // The store takes memory without touching it, so asking costs nothing.
    strata::data_store scratch;
    scratch.root().create_set("elements", strata::data_shape({count}, false),
                              strata::data_type::float64);
}

void require_memory(const std::vector<group_extent>& extents, double others) {
    double growth = others;
    for (const auto& [group, samples] : extents) {
        if (samples <= samples_of(group))
            continue;
        const auto sets = strata::set_count(group);
        const auto elements = sets * (components_of(group) + elements_of_residuals);
        growth += static_cast<double>(elements) * static_cast<double>(samples);
    }
    require_memory(growth);
}

void resize_device_groups(const std::vector<group_extent>& extents) {
    require_memory(extents);
    for (const auto& [group, samples] : extents)
        resize_device_group(group, samples);
}

} // namespace mox
