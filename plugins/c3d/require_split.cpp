#include "plugins/c3d/require_split.hpp"

#include <cstdint>
#include <string>

#include "plugins/c3d/bytes/export_error.hpp"
#include "schema/names.hpp"
#include "schema/split_record.hpp"

namespace c3d {

namespace {

std::uint64_t unsplit_channels_at(const strata::data_group& root, const char* path) {
    return root.exists_set(path) ? schema::unsplit_channels(root.retrieve_set(path)) : 0;
}

std::string counted(std::uint64_t count, const char* word) {
    return fmt::format("{} {}{}", count, word, count == 1 ? "" : "s");
}

} // namespace

void require_split(const strata::data_group& root) {
    const auto points = unsplit_channels_at(root, schema::points);
    const auto channels = unsplit_channels_at(root, schema::analogs);
    if (points == 0 && channels == 0)
        return;
    auto lost = points == 0 ? std::string() : counted(points, "point");
    if (channels != 0)
        lost += (lost.empty() ? "" : " and ") + counted(channels, "analog channel");
    // What kept them, a missing plugin or an importer's types of points, the log said when reading.
    throw export_error("{} of the file that was read would be lost: they did not become channels "
                       "of the acquisition, as the log says; where the plugin 'data_modifier' is "
                       "missing, put it back, call reload and read the file again",
                       lost);
}

} // namespace c3d
