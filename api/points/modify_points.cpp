#include "store/python.hpp"

#include "api/points/modify_points.hpp"

#include <vector>

#include <fmt/format.h>

#include "acquisition/channels/channels.hpp"
#include "acquisition/channels/find_point_kind.hpp"
#include "acquisition/time_base/resize_acquisition.hpp"
#include "api/channels/channel_lookup.hpp"
#include "api/channels/channel_numbering.hpp"
#include "api/channels/matrix_check.hpp"
#include "api/channels/remove_channels.hpp"
#include "api/channels/write_channels.hpp"
#include "api/points/read_points.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/typed_access.hpp"

namespace mox::points {

namespace attribute = schema::attribute;

namespace {

/// A point and the group that holds it.
struct found_point {
    strata::data_set set;
    strata::data_group holder;
};

found_point find(const strata::data_store& acquisition, int index) {
    found_point found;
    found.set =
        point_by_index(retrieve_group(acquisition.root(), schema::data), index, found.holder);
    return found;
}

found_point find(const strata::data_store& acquisition, const std::string& label) {
    found_point found;
    found.set =
        point_by_label(retrieve_group(acquisition.root(), schema::data), label, found.holder);
    return found;
}

/// What every change ends with reads all point groups: one that is missing is an error before it.
void require_point_groups(const strata::data_store& acquisition) {
    (void)point_groups(acquisition.root());
}

template <typename Key> outputs<2> remove(const strata::data_store& acquisition, const Key& key) {
    const auto [set, holder] = find(acquisition, key);
    remove_point(acquisition, holder, set);
    return all(acquisition);
}

template <typename Key>
outputs<2> set_text(const strata::data_store& acquisition, const Key& key, const char* name,
                    const std::string& text) {
    const auto found = find(acquisition, key);
    require_point_groups(acquisition);
    write_or_create(found.set, name, text);
    return all(acquisition);
}

template <typename Key>
outputs<2> set_type(const strata::data_store& acquisition, const Key& key,
                    const std::string& type_word) {
    const auto& kind = point_kind_of_word(type_word);
    auto [set, holder] = find(acquisition, key);
    auto target = retrieve_group(acquisition.root(), kind.path);
    require_point_groups(acquisition);
    if (holder.name() != kind.group_name) {
        const auto name = set.name();
        if (target.exists_set(name))
            throw_channel_exists(name);
        move_set(target, holder, set, name);
        set = target.retrieve_set(name);
    }
    write_or_create(set, attribute::metric_type, type_word);
    return all(acquisition);
}

} // namespace

outputs<2> append(strata::data_store acquisition, const std::string& type_word,
                  const std::string& label, PyObject* matrix) {
    const auto& kind = point_kind_of_word(type_word);
    const auto array = as_array(matrix);
    const auto group = retrieve_group(acquisition.root(), kind.path);
    const auto values = checked_matrix(array, samples_of(group), 1, 3);
    const auto index = channel_count(point_groups(acquisition.root()));
    const auto name = label.empty() ? unused_channel_names(group).next(index) : label;
    const auto set = make_channel(group, name, index, {});
    create_text(set, attribute::metric_type, type_word);
    write_channels_in_order({set}, values, 3);
    add_channel(group, set);
    return all(acquisition);
}

outputs<2> remove_by_index(strata::data_store acquisition, int index) {
    return remove(acquisition, index);
}

outputs<2> remove_by_label(strata::data_store acquisition, const std::string& label) {
    return remove(acquisition, label);
}

void clear(strata::data_store acquisition) {
    for (const auto& kind : schema::point_kind_table)
        delete_sets(retrieve_group(acquisition.root(), kind.path));
    resize_channels_to_come(acquisition);
}

outputs<2> set_label_by_index(strata::data_store acquisition, int index, const std::string& label) {
    return set_text(acquisition, index, attribute::label, label);
}

outputs<2> set_label_by_label(strata::data_store acquisition, const std::string& point,
                              const std::string& label) {
    return set_text(acquisition, point, attribute::label, label);
}

outputs<2> set_description_by_index(strata::data_store acquisition, int index,
                                    const std::string& text) {
    return set_text(acquisition, index, attribute::description, text);
}

outputs<2> set_description_by_label(strata::data_store acquisition, const std::string& point,
                                    const std::string& text) {
    return set_text(acquisition, point, attribute::description, text);
}

outputs<2> set_type_by_index(strata::data_store acquisition, int index,
                             const std::string& type_word) {
    return set_type(acquisition, index, type_word);
}

outputs<2> set_type_by_label(strata::data_store acquisition, const std::string& point,
                             const std::string& type_word) {
    return set_type(acquisition, point, type_word);
}

void set_unit(strata::data_store acquisition, const std::string& type_word,
              const std::string& unit) {
    const auto& kind = point_kind_of_word(type_word);
    for (const auto& set : sets_of(retrieve_group(acquisition.root(), kind.path)))
        write_or_create(set, attribute::unit, unit);
}

outputs<2> set_number(strata::data_store acquisition, int wanted) {
    const auto groups = point_groups(acquisition.root());
    auto markers = retrieve_group(acquisition.root(), schema::markers);
    const auto count = channel_count(groups);
    if (count > wanted) {
        shrink_channels(groups, count, wanted);
    } else {
        require_memory_for_channels(static_cast<double>(wanted) - count,
                                    3.0 * static_cast<double>(samples_of(markers)));
        unused_channel_names names(markers);
        for (auto index = count; index < wanted; ++index)
            create_marker(markers, names.next(index), index);
    }
    return all(acquisition);
}

} // namespace mox::points
