#include "schema/channel_names.hpp"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>

#include <fmt/format.h>

namespace schema {

namespace {

class name_pool {
  public:
    explicit name_pool(std::size_t count) { taken_.reserve(count); }

    bool take(const std::string& name) { return taken_.insert(name).second; }

    /// `base` with the next number, from `first` on, that makes a new name.
    std::string take_numbered(const std::string& base, std::size_t first) {
        auto& number = next_.try_emplace(base, first).first->second;
        while (true) {
            auto name = fmt::format("{}_{}", base, number++);
            if (take(name))
                return name;
        }
    }

  private:
    std::unordered_set<std::string> taken_;
    std::unordered_map<std::string, std::size_t> next_; // by base: many channels may share one
};

} // namespace

std::string path_component(std::string_view text) {
    std::string component(text);
    std::replace_if(
        component.begin(), component.end(), [](char c) { return c == '/' || c == '\\'; }, '_');
    return component;
}

std::vector<std::string> distinct_names(const std::vector<std::string>& labels) {
    std::vector<std::string> names(labels.size());
    name_pool pool(labels.size());
    // First those that are what their label says, then those that only resemble it: "A_2" stays
    // "A_2", though it comes behind two of "A".
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (!labels[i].empty() && path_component(labels[i]) == labels[i] && pool.take(labels[i])) {
            names[i] = labels[i];
        }
    }
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (!names[i].empty() || labels[i].empty())
            continue;
        auto name = path_component(labels[i]);
        names[i] = pool.take(name) ? std::move(name) : pool.take_numbered(name, 2);
    }
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (!names[i].empty())
            continue;
        // Kept: spelt with one n.
        auto name = fmt::format("unamed_{}", i);
        names[i] = pool.take(name) ? std::move(name) : pool.take_numbered("unamed", i);
    }
    return names;
}

} // namespace schema
