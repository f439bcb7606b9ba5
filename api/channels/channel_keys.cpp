#include "store/python.hpp"

#include "api/channels/channel_keys.hpp"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "api/channels/channel_kinds.hpp"
#include "schema/name_pool.hpp"
#include "schema/names.hpp"
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

/// Whether a key may be one that was made distinct: the keys of all channels are made only then.
bool is_numbered(const std::string& key) {
    const auto bar = key.rfind('_');
    return bar != std::string::npos && bar + 1 != key.size() &&
           key.find_first_not_of("0123456789", bar + 1) == std::string::npos;
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
    const auto channels = channels_of(groups_of_kind(acquisition, kind));
    const auto labelled = std::ranges::find(channels, key, label_of);
    if (labelled != channels.end())
        return *labelled;
    if (!is_numbered(key))
        return std::nullopt;
    const auto names = keys_of(channels);
    const auto numbered = std::ranges::find(names, key);
    if (numbered == names.end())
        return std::nullopt;
    return channels[static_cast<std::size_t>(numbered - names.begin())];
}

} // namespace mox::channels
