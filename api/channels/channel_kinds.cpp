#include "store/python.hpp"

#include "api/channels/channel_kinds.hpp"

#include <iterator>

#include <fmt/format.h>

#include "acquisition/channels/channels.hpp"
#include "acquisition/channels/find_point_kind.hpp"
#include "api/channels/channel_numbering.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"

namespace mox::channels {

std::vector<strata::data_group> groups_of_kind(const strata::data_store& acquisition,
                                               const std::string& kind) {
    if (kind == schema::name::points)
        return point_groups(acquisition.root());
    return {group_of_kind(acquisition, kind)};
}

strata::data_group group_of_kind(const strata::data_store& acquisition, const std::string& kind) {
    if (kind == schema::name::analogs)
        return retrieve_group(acquisition.root(), schema::analogs_export);
    const auto* found = find_point_kind_of_group(kind);
    if (!found)
        throw swig_error(error_code::value, fmt::format("There is no kind '{}'", kind));
    return retrieve_group(acquisition.root(), found->path);
}

std::vector<strata::data_set> channels_of(const std::vector<strata::data_group>& groups) {
    std::vector<strata::data_set> channels;
    for (const auto& group : groups) {
        auto sets = sets_of(group);
        channels.insert(channels.end(), std::make_move_iterator(sets.begin()),
                        std::make_move_iterator(sets.end()));
    }
    return channels;
}

py_ref count(strata::data_store acquisition, const std::string& kind) {
    const auto channels = channel_count(groups_of_kind(acquisition, kind));
    return py_ref::checked(PyLong_FromLong(channels));
}

} // namespace mox::channels
