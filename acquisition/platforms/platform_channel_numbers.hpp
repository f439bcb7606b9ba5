#pragma once

#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace mox {

/// The channels that FORCE_PLATFORM:CHANNEL names, remembered while channels are removed: a number
/// that nothing but the order of the channels gives a meaning to follows its channel.
class platform_channel_numbers {
  public:
    explicit platform_channel_numbers(strata::data_group root);

    /// Makes the parameter name the channels that it named: 0, which means none, for one that is
    /// gone. Entries of ANALOG:LABELS and columns of a file keep their numbers.
    void follow_channels();

  private:
    strata::data_group root_;
    std::vector<strata::data_set> columns_; ///< when it was made; none without the parameter
};

} // namespace mox
