#include "store/python.hpp"

#include "api/channels/channel_keys.hpp"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "api/channels/channel_kinds.hpp"
#include "api/channels/channel_lookup.hpp"
#include "schema/name_pool.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/python_read.hpp"
#include "store/typed_access.hpp"

namespace mox::channels {

namespace attribute = schema::attribute;

namespace {

std::string label_of(const strata::data_set& channel) {
    auto label = read<std::string>(channel.retrieve_attribute(attribute::label));
    return label.empty() ? channel.name() : label;
}

std::vector<std::string> keys_of(const std::vector<strata::data_set>& channels) {
    std::vector<std::string> labels(channels.size());
    std::ranges::transform(channels, labels.begin(), label_of);
    return distinct_keys(std::move(labels));
}

/// What a key is the number of, if it is one that was made distinct; empty for any other.
std::string without_number(const std::string& key) {
    const auto bar = key.rfind('_');
    const bool is_numbered = bar != std::string::npos && bar + 1 != key.size() &&
                             key.find_first_not_of("0123456789", bar + 1) == std::string::npos;
    return is_numbered ? key.substr(0, bar) : std::string();
}

/// The set of this name, where that is what its channel is called by.
std::optional<strata::data_set> find_unlabelled(const strata::data_group& group,
                                                const std::string& key) {
    if (key.empty() || !group.exists_set(key))
        return std::nullopt;
    auto set = group.retrieve_set(key); // also that of a path
    const bool is_called_so =
        set.name() == key && read<std::string>(set.retrieve_attribute(attribute::label)).empty();
    return is_called_so ? std::optional(std::move(set)) : std::nullopt;
}

/// The first channel of `group` that is called `key`, without the number of a repeated one.
std::optional<strata::data_set> find_labelled(const strata::data_group& group,
                                              const std::string& key) {
    auto labelled = key.empty() ? std::nullopt : find_set_by_label(group, key);
    auto unlabelled = find_unlabelled(group, key);
    if (!labelled || !unlabelled)
        return labelled ? labelled : unlabelled;
    const auto sets = sets_of(group);
    return *std::ranges::find(sets, key, label_of);
}

std::optional<strata::data_set> find_labelled(const std::vector<strata::data_group>& groups,
                                              const std::string& key) {
    for (const auto& group : groups) {
        if (auto channel = find_labelled(group, key))
            return channel;
    }
    return std::nullopt;
}

/// Where a channel stands among others; those without index come last.
std::int32_t index_of(const strata::data_set& channel) {
    return read<std::int32_t>(channel.retrieve_attribute(attribute::relative_set_index),
                              std::numeric_limits<std::int32_t>::max());
}

} // namespace

// Whichever label is there once stays what it is.
std::vector<std::string> distinct_keys(std::vector<std::string> labels) {
    schema::name_pool names;
    std::vector<std::string*> repeated;
    for (auto& label : labels) {
        if (!names.take(label))
            repeated.push_back(&label);
    }
    for (auto* label : repeated)
        *label = names.take_numbered(*label);
    return labels;
}

py_ref keys(strata::data_store acquisition, const std::string& kind) {
    const auto channels = channels_of(groups_of_kind(acquisition, kind));
    // Numbers follow the order of the groups, as in the functions' dictionaries.
    auto names = keys_of(channels);
    std::vector<std::pair<std::int32_t, std::string>> keyed;
    keyed.reserve(channels.size());
    for (std::size_t i = 0; i < channels.size(); ++i)
        keyed.emplace_back(index_of(channels[i]), std::move(names[i]));
    std::ranges::stable_sort(keyed, {}, &std::pair<std::int32_t, std::string>::first);

    auto list = py_ref::checked(PyList_New(static_cast<Py_ssize_t>(keyed.size())));
    for (std::size_t i = 0; i < keyed.size(); ++i)
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i),
                        text_to_python(keyed[i].second).release());
    return list;
}

std::optional<strata::data_set> find(strata::data_store acquisition, const std::string& kind,
                                     const std::string& key) {
    const auto groups = groups_of_kind(acquisition, kind);
    if (auto channel = find_labelled(groups, key))
        return channel;
    // The keys of all channels are made only where there may be such a one.
    if (!find_labelled(groups, without_number(key)))
        return std::nullopt;
    const auto channels = channels_of(groups);
    const auto names = keys_of(channels);
    const auto numbered = std::ranges::find(names, key);
    if (numbered == names.end())
        return std::nullopt;
    return channels[static_cast<std::size_t>(numbered - names.begin())];
}

} // namespace mox::channels
