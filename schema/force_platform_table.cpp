#include "schema/force_platform_table.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace schema {

namespace {

constexpr std::size_t usual_channels = 6;
constexpr std::size_t polynomial_coefficients = 12; // six for each axis

/// 0, which no type and no channel is, for what is none: types and channels may be stored as reals.
std::int64_t whole_number(double value) noexcept {
    constexpr double largest = 1e9; // far beyond both
    return std::abs(value) < largest && std::trunc(value) == value
               ? static_cast<std::int64_t>(value)
               : 0;
}

/// How many platforms USED tells: none with a negative number; nothing where it is no count.
std::optional<std::size_t> count_told(const std::vector<double>& used) noexcept {
    constexpr double more_than_any = 1e9;
    if (used.empty() || std::trunc(used.front()) != used.front()) // a NaN equals nothing
        return std::nullopt;
    return static_cast<std::size_t>(std::clamp(used.front(), 0.0, more_than_any));
}

} // namespace

std::span<const double> force_platform_table::numbers::entry(std::size_t index) const {
    if (width == 0 || index >= values.size() / width)
        return {};
    return std::span(values).subspan(index * width, width);
}

force_platform_table::force_platform_table(const strata::data_group& root) {
    if (!root.exists_group(metadata_force_platform))
        return;
    const auto group = root.retrieve_group(metadata_force_platform);
    types_ = read(group, parameter::type);
    types_.width = 1;
    corners_ = read_blocks(group, parameter::corners, {4, 3});
    origins_ = read_blocks(group, parameter::origin, {3});
    read_polynomials(group);
    read_channels(group);
    read_matrices(group);
    count_platforms(group);
}

force_platform_table::numbers force_platform_table::read(const strata::data_group& group,
                                                         const char* name) {
    const auto attribute = group.retrieve_attribute(name);
    if (!attribute)
        return {};
    numbers table{{}, attribute.shape().dimensions(), 0};
    if (holds_numbers(attribute))
        table.values = read_numbers<double>(attribute);
    else if (attribute.shape().element_count() != 0)
        unreadable_.emplace_back(name);
    return table;
}

force_platform_table::numbers
force_platform_table::read_blocks(const strata::data_group& group, const char* name,
                                  const std::vector<std::int64_t>& inner) {
    auto table = read(group, name);
    table.width = 1;
    for (const auto extent : inner)
        table.width *= static_cast<std::size_t>(extent);
    if (!has_blocks(table.extents, inner))
        drop(table, name);
    return table;
}

void force_platform_table::read_polynomials(const strata::data_group& group) {
    constexpr auto* name = parameter::pressure_polynomial;
    polynomials_ = read(group, name);
    polynomials_.width = polynomial_coefficients;
    if (!has_lists(polynomials_.extents, polynomial_coefficients))
        drop(polynomials_, name);
}

void force_platform_table::read_channels(const strata::data_group& group) {
    constexpr auto* name = parameter::channel;
    channels_ = read(group, name);
    const auto attribute = group.retrieve_attribute(name);
    if (attribute && attribute.type() == strata::data_type::int8) {
        for (auto& number : channels_.values) // numbers over 127 are written as bytes, too
            number += number < 0.0 ? 256.0 : 0.0;
    }
    const auto width = width_of_rows(channels_.extents, types_.values.size(), usual_channels);
    channels_.width = width && *width != 0 ? *width : width_of_flattened_channels();
    if (!width)
        drop(channels_, name);
}

void force_platform_table::read_matrices(const strata::data_group& group) {
    constexpr auto* name = parameter::calibration;
    matrices_ = read(group, name);
    const auto extent = extent_of_matrices(matrices_.extents, types_.values.size(), usual_channels);
    matrix_extent_ = extent.value_or(matrix_extent{});
    matrices_.width = matrix_extent_.elements();
    if (!extent)
        drop(matrices_, name);
}

void force_platform_table::count_platforms(const strata::data_group& group) {
    const auto told = count_told(read(group, parameter::used).values);
    count_ = types_.values.size();
    if (count_ == 0 && told) {
        for (const auto* table : {&corners_, &origins_, &channels_})
            count_ = std::max(count_, table->values.size() / table->width);
    }
    if (told)
        count_ = std::min(count_, *told);
}

/// Takes a table for missing, for its dimensions.
void force_platform_table::drop(numbers& table, const char* name) {
    if (!table.values.empty()) {
        misshapen_.push_back(fmt::format("FORCE_PLATFORM:{} is not read : its dimensions are {}",
                                         name, fmt::join(table.extents, " x ")));
    }
    table.values.clear();
}

/// One row of numbers says nothing of its width. Equal shares are right where they suffice for a
/// platform; else a platform of type 3 makes the rows of all eight wide.
std::size_t force_platform_table::width_of_flattened_channels() const {
    const auto platforms = types_.values.size();
    const auto total = channels_.values.size();
    if (platforms > 0 && total % platforms == 0 && total / platforms >= usual_channels)
        return total / platforms;
    const bool has_type_3 = std::ranges::find(types_.values, 3.0) != types_.values.end();
    return has_type_3 ? channels_of_type(3) : usual_channels;
}

std::vector<std::int64_t> force_platform_table::channels_of(std::size_t index,
                                                            std::int64_t type) const {
    std::vector<std::int64_t> channels;
    for (const auto number : channels_.entry(index))
        channels.push_back(std::max<std::int64_t>(whole_number(number), 0));
    if (const auto known = channels_of_type(type))
        channels.resize(std::min(channels.size(), known));
    else
        std::erase(channels, 0);
    return channels;
}

/// Matrices are stored column by column.
square_matrix force_platform_table::matrix_of(std::size_t index, std::int64_t type) const {
    const auto stored = matrices_.entry(index);
    if (stored.empty())
        return {};
    const auto [rows, columns] = matrix_extent_;
    const auto known = channels_of_type(type);
    const auto size = std::min(rows, columns);
    square_matrix matrix{known == 0 ? size : std::min(known, size), {}};
    matrix.elements.reserve(matrix.size * matrix.size);
    for (std::size_t row = 0; row < matrix.size; ++row) {
        for (std::size_t column = 0; column < matrix.size; ++column)
            matrix.elements.push_back(stored[row + rows * column]);
    }
    return matrix;
}

force_platform force_platform_table::platform(std::size_t index) const {
    force_platform platform;
    if (const auto type = types_.entry(index); !type.empty())
        platform.type = whole_number(type.front());
    platform.channels = channels_of(index, platform.type);
    if (const auto corners = corners_.entry(index); !corners.empty()) {
        platform.corners.emplace();
        for (std::size_t i = 0; i < corners.size(); ++i)
            (*platform.corners)[i / 3][i % 3] = corners[i];
    }
    if (const auto origin = origins_.entry(index); !origin.empty())
        platform.origin = {origin[0], origin[1], origin[2]};
    platform.calibration = matrix_of(index, platform.type);
    const auto polynomial = polynomials_.entry(index);
    platform.polynomial.assign(polynomial.begin(), polynomial.end());
    return platform;
}

} // namespace schema
