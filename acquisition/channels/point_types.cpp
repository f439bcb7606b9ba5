#include "acquisition/channels/point_types.hpp"

#include <algorithm>

#include <fmt/format.h>

#include "store/swig_error.hpp"

namespace mox {

const point_type& point_type_of_word(std::string_view word) {
    const auto found = std::ranges::find(point_types, word, &point_type::word);
    if (found == point_types.end())
        throw_runtime_error(fmt::format("Unsupported point type : \"{}\"", word));
    return *found;
}

const point_type* find_point_type_of_group(std::string_view name) noexcept {
    const auto found = std::ranges::find(point_types, name, &point_type::group_name);
    return found == point_types.end() ? nullptr : &*found;
}

} // namespace mox
