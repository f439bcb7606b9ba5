#pragma once

#include <string>
#include <vector>

#include <strata/data_group.hpp>

namespace data_modifier {

/// The group that receives the channels. Unless it is kept, everything that was made for it is
/// taken away again.
class destination_group {
  public:
    /// Opens the group, or creates it and those on the way. Throws strata::store_error.
    destination_group(strata::data_group root, const std::string& path);
    destination_group(const destination_group&) = delete;
    destination_group& operator=(const destination_group&) = delete;
    ~destination_group();

    [[nodiscard]] strata::data_group& group() noexcept { return group_; }

    /// Says that a set of this name is about to be created in the group.
    void announce(std::string set_name) { announced_.push_back(std::move(set_name)); }

    void keep() noexcept { kept_ = true; }

  private:
    strata::data_group root_;
    // Path of the topmost group that was created; empty when the group existed.
    std::string created_;
    strata::data_group group_;
    std::vector<std::string> announced_;
    bool kept_ = false;
};

} // namespace data_modifier
