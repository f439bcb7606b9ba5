#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include <strata/data_group.hpp>

namespace data_modifier {

/// Chooses names for channels' sets that are free in a group.
class channel_names {
  public:
    /// `preferred`: a name for each channel, be it empty or missing. `labels`: what names are made
    /// of otherwise.
    channel_names(strata::data_group group, std::vector<std::string> preferred,
                  const std::vector<std::string>& labels);

    /// The name for the channel with this index. A separator of paths becomes "_", no name at all
    /// "unamed_<index>", and a name that is taken gets the suffix "_2", "_3" and so on.
    [[nodiscard]] std::string choose(std::uint64_t index);

  private:
    strata::data_group group_;
    std::vector<std::string> preferred_;
    const std::vector<std::string>& labels_;
    // The next suffix to try for a name, so that thousands of channels of one label are named in
    // linear time.
    std::unordered_map<std::string, std::uint64_t> next_suffix_;
};

} // namespace data_modifier
