#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace schema {

/// Names of which no two may be equal: a name that is taken already gets a number behind it.
class name_pool {
  public:
    /// Takes `name`; false when it was taken already.
    bool take(const std::string& name);

    /// Takes `name` if it is free, else the first free one of "<name>_2", "<name>_3" and so on.
    /// The name that was taken.
    std::string take_distinct(const std::string& name);

    /// Takes the first free one of "<base>_<first>" and so on, be `base` free or not. The name that
    /// was taken. Naming many by one base is linear in their number: `first` counts the first time
    /// only.
    std::string take_numbered(const std::string& base, std::size_t first = 2);

  private:
    std::unordered_set<std::string> taken_;
    std::unordered_map<std::string, std::size_t> next_; // number to try next, by base
};

} // namespace schema
