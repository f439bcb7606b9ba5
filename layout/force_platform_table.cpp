#include "layout/force_platform_table.hpp"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <utility>

#include "layout/read_attribute.hpp"

namespace acquisition_layout {

namespace {

constexpr std::size_t corner_numbers = 12;
constexpr std::size_t origin_numbers = 3;
constexpr std::size_t polynomial_numbers = 12;
constexpr std::size_t usual_channels = 6;

/// The numbers of one parameter and the dimensions they are stored in, the platforms first.
struct table {
    std::vector<double> numbers;
    std::vector<std::int64_t> extents;

    /// The numbers of one platform, none when it has not all of them.
    [[nodiscard]] std::span<const double> entry(std::size_t index, std::size_t width) const {
        if (width == 0 || index >= numbers.size() / width)
            return {};
        return std::span(numbers).subspan(index * width, width);
    }
};

table read_table(const strata::data_group& group, std::string_view name) {
    const auto attribute = group.retrieve_attribute(name);
    if (!attribute)
        return {};
    return {read_numbers<double>(attribute), attribute.shape().dimensions()};
}

std::int64_t whole_number(double value) noexcept {
    constexpr double largest = 1e9;
    return std::abs(value) < largest && std::trunc(value) == value
               ? static_cast<std::int64_t>(value)
               : 0;
}

/// All tables, and how wide each of them is.
struct tables {
    explicit tables(const strata::data_group& group)
        : types(read_table(group, "TYPE")), corners(read_table(group, "CORNERS")),
          origins(read_table(group, "ORIGIN")), channels(read_table(group, "CHANNEL")),
          matrices(read_table(group, "CAL_MATRIX")), polynomials(read_table(group, "FPCOPPOLY")),
          channel_width(width_of_channels()), matrix_size(size_of_matrices()) {}

    [[nodiscard]] std::size_t entries() const {
        if (!types.numbers.empty())
            return types.numbers.size();
        return std::max({corners.numbers.size() / corner_numbers,
                         origins.numbers.size() / origin_numbers,
                         channels.numbers.size() / channel_width});
    }

    table types;
    table corners;
    table origins;
    table channels;
    table matrices;
    table polynomials;
    std::size_t channel_width; ///< at least 1
    std::size_t matrix_size;

  private:
    [[nodiscard]] std::size_t width_of_channels() const {
        if (channels.extents.size() > 1)
            return static_cast<std::size_t>(std::max<std::int64_t>(channels.extents.back(), 1));
        const auto platforms = types.numbers.size();
        if (platforms > 0 && channels.numbers.size() % platforms == 0 &&
            channels.numbers.size() / platforms >= usual_channels)
            return channels.numbers.size() / platforms;
        const bool has_type_3 = std::ranges::find(types.numbers, 3.0) != types.numbers.end();
        return has_type_3 ? channels_of_type(3) : usual_channels;
    }

    [[nodiscard]] std::size_t size_of_matrices() const {
        const auto& extents = matrices.extents;
        if (extents.size() > 1 && extents.back() == extents[extents.size() - 2])
            return static_cast<std::size_t>(extents.back());
        const auto platforms = types.numbers.size();
        const auto each = platforms > 0 && matrices.numbers.size() % platforms == 0
                              ? matrices.numbers.size() / platforms
                              : 0;
        const auto root = static_cast<std::size_t>(std::lround(std::sqrt(each)));
        return root >= usual_channels && root * root == each ? root : usual_channels;
    }
};

std::vector<std::int64_t> channels_of(const tables& all, std::size_t index, std::int64_t type) {
    std::vector<std::int64_t> channels;
    for (const auto number : all.channels.entry(index, all.channel_width))
        channels.push_back(std::max<std::int64_t>(whole_number(number), 0));
    if (const auto known = channels_of_type(type))
        channels.resize(std::min(channels.size(), known));
    else
        std::erase(channels, 0);
    return channels;
}

/// Matrices are stored column by column.
square_matrix matrix_of(const tables& all, std::size_t index, std::int64_t type) {
    const auto stored_size = all.matrix_size;
    const auto stored = all.matrices.entry(index, stored_size * stored_size);
    if (stored.empty())
        return {};
    const auto known = channels_of_type(type);
    square_matrix matrix{known == 0 ? stored_size : std::min(known, stored_size), {}};
    matrix.elements.reserve(matrix.size * matrix.size);
    for (std::size_t row = 0; row < matrix.size; ++row) {
        for (std::size_t column = 0; column < matrix.size; ++column)
            matrix.elements.push_back(stored[row + stored_size * column]);
    }
    return matrix;
}

force_platform platform_of(const tables& all, std::size_t index) {
    force_platform platform;
    if (index < all.types.numbers.size())
        platform.type = whole_number(all.types.numbers[index]);
    platform.channels = channels_of(all, index, platform.type);
    if (const auto corners = all.corners.entry(index, corner_numbers); !corners.empty()) {
        platform.corners.emplace();
        for (std::size_t i = 0; i < corner_numbers; ++i)
            (*platform.corners)[i / 3][i % 3] = corners[i];
    }
    if (const auto origin = all.origins.entry(index, origin_numbers); !origin.empty())
        platform.origin = {origin[0], origin[1], origin[2]};
    platform.calibration = matrix_of(all, index, platform.type);
    const auto polynomial = all.polynomials.entry(index, polynomial_numbers);
    platform.polynomial.assign(polynomial.begin(), polynomial.end());
    return platform;
}

} // namespace

std::vector<force_platform> read_force_platforms(const strata::data_group& root) {
    if (!root.exists_group(force_platform_path))
        return {};
    const auto group = root.retrieve_group(force_platform_path);
    const tables all(group);
    auto count = all.entries();
    if (const auto used = read_number<double>(group.retrieve_attribute("USED"))) {
        const auto wanted = std::max<std::int64_t>(whole_number(*used), 0);
        count = std::min(count, static_cast<std::size_t>(wanted));
    } else if (all.types.numbers.empty()) {
        count = 0;
    }
    std::vector<force_platform> platforms;
    platforms.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        platforms.push_back(platform_of(all, i));
    return platforms;
}

} // namespace acquisition_layout
