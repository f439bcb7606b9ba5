#include "schema/name_pool.hpp"

#include <fmt/format.h>

namespace schema {

bool name_pool::take(const std::string& name) { return taken_.insert(name).second; }

std::string name_pool::take_distinct(const std::string& name) {
    return take(name) ? name : take_numbered(name);
}

std::string name_pool::take_numbered(const std::string& base, std::size_t first) {
    auto& number = next_.try_emplace(base, first).first->second;
    while (true) {
        auto name = fmt::format("{}_{}", base, number++);
        if (take(name))
            return name;
    }
}

} // namespace schema
