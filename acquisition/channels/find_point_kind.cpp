#include "acquisition/channels/find_point_kind.hpp"

#include <algorithm>

#include <fmt/format.h>

#include "store/swig_error.hpp"

namespace mox {

using schema::point_kind;
using schema::point_kind_table;

const point_kind& point_kind_of_word(std::string_view word) {
    const auto found = std::ranges::find(point_kind_table, word, &point_kind::word);
    if (found == point_kind_table.end())
        throw_runtime_error(fmt::format("Unsupported point type : \"{}\"", word));
    return *found;
}

const point_kind* find_point_kind_of_group(std::string_view name) noexcept {
    const auto found = std::ranges::find(point_kind_table, name, &point_kind::group_name);
    return found == point_kind_table.end() ? nullptr : &*found;
}

} // namespace mox
