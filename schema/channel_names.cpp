#include "schema/channel_names.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <fmt/format.h>

#include "schema/name_pool.hpp"

namespace schema {

std::string unnamed_channel(std::int64_t index) { return fmt::format("{}_{}", unnamed, index); }

namespace {

constexpr std::string_view separators = "/\\";

} // namespace

bool is_path_component(std::string_view text) noexcept {
    return !text.empty() && text.find_first_of(separators) == std::string_view::npos;
}

std::string path_component(std::string_view text) {
    std::string component(text);
    std::ranges::replace_if(
        component, [](char c) { return separators.find(c) != std::string_view::npos; }, '_');
    return component;
}

std::vector<std::string> distinct_names(const std::vector<std::string>& labels) {
    std::vector<std::string> names(labels.size());
    name_pool pool;
    // First those that are what their label says, then those that only resemble it: "A_2" stays
    // "A_2", though it comes behind two of "A".
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (is_path_component(labels[i]) && pool.take(labels[i]))
            names[i] = labels[i];
    }
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (!names[i].empty() || labels[i].empty())
            continue;
        names[i] = pool.take_distinct(path_component(labels[i]));
    }
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (!names[i].empty())
            continue;
        auto name = unnamed_channel(static_cast<std::int64_t>(i));
        names[i] = pool.take(name) ? std::move(name) : pool.take_numbered(unnamed, i);
    }
    return names;
}

} // namespace schema
