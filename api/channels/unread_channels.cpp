#include "store/python.hpp"

#include "api/channels/unread_channels.hpp"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "api/channels/channel_keys.hpp"
#include "schema/names.hpp"
#include "schema/partial_reading.hpp"
#include "schema/point_kind_table.hpp"
#include "store/dictionary.hpp"
#include "store/python_read.hpp"

namespace mox::channels {

namespace {

std::vector<std::string_view> kinds_in_files() {
    std::vector<std::string_view> kinds;
    kinds.reserve(schema::point_kinds_in_files.size() + 2);
    for (const auto* kind : schema::point_kinds_in_files)
        kinds.push_back(kind->group_name);
    kinds.emplace_back(schema::name::analogs);
    kinds.emplace_back(schema::name::rotations);
    return kinds;
}

py_ref units_by_key(const schema::unread_channels& unread, std::string_view kind) {
    std::vector<std::string> labels;
    std::vector<std::string> units;
    for (std::size_t i = 0; i < unread.kinds.size(); ++i) {
        if (unread.kinds[i] != kind)
            continue;
        labels.push_back(unread.labels[i]);
        units.push_back(unread.units[i]);
    }
    const auto keys = distinct_keys(std::move(labels));
    auto dictionary = py_ref::checked(PyDict_New());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto key = text_to_python(keys[i]);
        if (PyDict_SetItem(dictionary.get(), key.get(), text_to_python(units[i]).get()) < 0)
            throw python_error{};
    }
    return dictionary;
}

} // namespace

py_ref unread(strata::data_store acquisition) {
    const auto channels = schema::unread_of(acquisition.root());
    auto dictionary = py_ref::checked(PyDict_New());
    for (const auto kind : kinds_in_files()) {
        if (channels.contain(kind))
            set_item(dictionary.get(), kind, units_by_key(channels, kind));
    }
    return dictionary;
}

void carry_unread(strata::data_store acquisition, strata::data_store source) {
    const auto theirs = schema::unread_of(source.root());
    schema::unread_channels carried;
    for (std::size_t i = 0; i < theirs.kinds.size(); ++i) {
        if (theirs.kinds[i] != schema::name::rotations)
            carried.add(theirs.kinds[i], theirs.labels[i], theirs.units[i]);
    }
    schema::keep_unread_of_other(acquisition.root(), carried);
}

} // namespace mox::channels
