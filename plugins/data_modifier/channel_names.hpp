#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>

#include "schema/name_pool.hpp"

namespace data_modifier {

/// Chooses names for channels' sets that are free in a group, to which nobody else adds meanwhile.
class channel_names {
  public:
    /// `preferred`: a name for each channel, be it empty or missing. `labels`: what names are made
    /// of otherwise.
    channel_names(const strata::data_group& group, std::vector<std::string> preferred,
                  const std::vector<std::string>& labels);

    /// The name for the channel with this index. A separator of paths becomes "_", no name at all
    /// "unamed_<index>", and a name that is taken gets the suffix "_2", "_3" and so on.
    [[nodiscard]] std::string choose(std::uint64_t index);

  private:
    std::vector<std::string> preferred_;
    const std::vector<std::string>& labels_;
    schema::name_pool taken_;
};

} // namespace data_modifier
