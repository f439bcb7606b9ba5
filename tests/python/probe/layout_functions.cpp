#include "store/python.hpp"

#include <cstdint>
#include <string>

#include <strata/data_store.hpp>

#include "acquisition/channels/channels.hpp"
#include "acquisition/channels/find_point_kind.hpp"
#include "acquisition/time_base/resize_channels.hpp"
#include "module/function_row.hpp"
#include "tests/python/probe/functions.hpp"
#include "tests/python/probe/places.hpp"

namespace mox::probe {

namespace {

void create_device_group(strata::data_store store, const std::string& parent,
                         const std::string& name, const std::string& device_type) {
    mox::create_device_group(group_at(store, parent), name, device_type);
}

void create_channel(strata::data_store store, const std::string& group, const std::string& label,
                    int index, const std::string& description) {
    const auto parent = group_at(store, group);
    add_channel(parent, make_channel(parent, label, index, description));
}

void create_marker(strata::data_store store, const std::string& group, const std::string& label,
                   int index) {
    mox::create_marker(group_at(store, group), label, index);
}

void add_analog_channels(strata::data_store store, const std::string& group, int first, int last) {
    mox::add_analog_channels(group_at(store, group), first, last);
}

void resize_group(strata::data_store store, const std::string& group, int samples) {
    resize_device_groups({{group_at(store, group), static_cast<std::uint64_t>(samples)}});
}

std::string group_of_point_type(const std::string& word) {
    return std::string(point_kind_of_word(word).group_name);
}

} // namespace

std::vector<PyMethodDef> layout_functions() {
    return {
        function_row<"create_device_group", &create_device_group>(),
        function_row<"create_channel", &create_channel>(),
        function_row<"create_marker", &create_marker>(),
        function_row<"add_analog_channels", &add_analog_channels>(),
        function_row<"resize_group", &resize_group>(),
        function_row<"group_of_point_type", &group_of_point_type>(),
    };
}

} // namespace mox::probe
