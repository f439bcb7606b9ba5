#include "plugins/data_modifier/destination_group.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

namespace data_modifier {

namespace {

/// The part of `path` up to the first group that does not exist; empty when all exist.
std::string topmost_missing(const strata::data_group& root, std::string_view path) {
    for (std::size_t end = 0; end < path.size();) {
        end = std::min(path.find('/', end + 1), path.size());
        if (!root.exists_group(path.substr(0, end)))
            return std::string{path.substr(0, end)};
    }
    return {};
}

} // namespace

destination_group::destination_group(strata::data_group root, const std::string& path)
    : root_(std::move(root)), created_(topmost_missing(root_, path)),
      group_(created_.empty() ? root_.retrieve_group(path) : root_.create_group(path)) {}

destination_group::~destination_group() {
    if (kept_)
        return;
    if (!created_.empty()) {
        root_.delete_group(created_);
        return;
    }
    for (const auto& name : announced_) {
        if (group_.exists_set(name))
            group_.delete_set(name);
    }
}

} // namespace data_modifier
