#include "acquisition/platforms/platform_remarks.hpp"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include <fmt/format.h>

#include "schema/names.hpp"
#include "schema/parameter_list.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"
#include "store/store_log.hpp"

namespace mox {

namespace {

void add_repeated_labels(const strata::data_group& root, std::vector<std::string>& remarks) {
    const auto labels =
        schema::read_parameter_list(root, schema::metadata_analog, schema::parameter::labels);
    if (!labels)
        return;
    std::unordered_map<std::string, int> counts;
    for (const auto& label : *labels) {
        if (!label.empty() && ++counts[label] == 2)
            remarks.push_back(fmt::format(
                "ANALOG:LABELS has '{}' repeatedly; each entry takes a channel of its own", label));
    }
}

void add_shared_channels(const std::vector<platform_state>& platforms,
                         std::vector<std::string>& remarks) {
    std::unordered_map<std::int64_t, std::size_t> users;
    std::unordered_set<std::int64_t> told;
    for (std::size_t i = 0; i < platforms.size(); ++i) {
        for (const auto number : platforms[i].described.channels) {
            const auto [user, is_first] = users.emplace(number, i);
            if (number != 0 && !is_first && user->second != i && told.insert(number).second)
                remarks.push_back(fmt::format("FORCE_PLATFORM:CHANNEL names the analog channel {} "
                                              "for the platforms {} and {}",
                                              number, user->second + 1, i + 1));
        }
    }
}

} // namespace

std::vector<std::string> remarks_on(const strata::data_group& root,
                                    const schema::force_platform_table& table,
                                    const std::vector<platform_state>& platforms) {
    auto remarks = table.misshapen();
    add_shared_channels(platforms, remarks);
    add_repeated_labels(root, remarks);
    return remarks;
}

void log_news(strata::data_group group, const char* name, const std::vector<std::string>& lines) {
    const auto attribute = group.retrieve_attribute(name);
    const auto known = schema::read_texts(attribute);
    if (known == lines)
        return;
    const std::unordered_set<std::string> told(known.begin(), known.end());
    for (const auto& line : lines) {
        if (!told.contains(line))
            log_store_failure(line);
    }
    if (attribute)
        group.delete_attribute(name);
    schema::write_texts(group, name, lines);
}

} // namespace mox
