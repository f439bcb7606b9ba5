#include "api/channels/remove_channels.hpp"

#include "acquisition/channels/channels.hpp"
#include "acquisition/platforms/platform_channel_numbers.hpp"
#include "acquisition/time_base/resize_acquisition.hpp"
#include "api/channels/channel_numbering.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"

namespace mox {

void remove_point(const strata::data_store& acquisition, const strata::data_group& holder,
                  const strata::data_set& point) {
    remove_channel(holder, point, point_groups(acquisition.root()));
    resize_channels_to_come(acquisition);
}

void remove_analog(const strata::data_store& acquisition, const strata::data_set& channel) {
    const auto group = retrieve_group(acquisition.root(), schema::analogs_export);
    platform_channel_numbers platforms(acquisition.root());
    remove_channel(group, channel, {group});
    platforms.follow_channels();
    resize_channels_to_come(acquisition);
}

} // namespace mox
