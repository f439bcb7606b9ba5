#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include <strata/access/name_hash.hpp>

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
    /// The library's own hash has the same key everywhere.
    struct keyed_hash {
        std::size_t operator()(const std::string& name) const noexcept {
            return strata::name_hash(name);
        }
    };
    std::unordered_set<std::string, keyed_hash> taken_;
    std::unordered_map<std::string, std::size_t, keyed_hash> next_; // number to try next, by base
};

} // namespace schema
