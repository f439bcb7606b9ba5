#pragma once

#include <string>
#include <unordered_set>

#include <fmt/format.h>

namespace mox {

/// Keys of one dictionary: of equal names, the second becomes name + "_2" and so on.
class distinct_keys {
  public:
    [[nodiscard]] std::string key_of(const std::string& name) {
        auto key = name;
        for (int number = 2; !taken_.insert(key).second; ++number)
            key = fmt::format("{}_{}", name, number);
        return key;
    }

  private:
    std::unordered_set<std::string> taken_;
};

} // namespace mox
