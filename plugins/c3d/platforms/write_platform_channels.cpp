#include "plugins/c3d/platforms/write_platform_channels.hpp"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "plugins/c3d/parameters/parameter_table.hpp"
#include "plugins/c3d/parameters/parameter_values.hpp"
#include "schema/analog_pairing.hpp"

namespace c3d {

namespace {

/// The numbers that channels get, by those that they had.
class new_numbers {
  public:
    new_numbers(const strata::data_group& root, std::span<const analog_column> columns) {
        std::unordered_map<std::string, std::uint64_t> by_name;
        for (std::size_t i = 0; i < columns.size(); ++i)
            by_name.emplace(columns[i].set.name(), i + 1);
        for (const auto& set : schema::pair_analogs(root)) {
            const auto found = set ? by_name.find(set.name()) : by_name.end();
            numbers_.push_back(found == by_name.end() ? 0 : found->second);
        }
    }

    [[nodiscard]] std::uint64_t of(std::uint64_t number) const noexcept {
        return number == 0 || number > numbers_.size()
                   ? number
                   : numbers_[static_cast<std::size_t>(number - 1)];
    }

  private:
    std::vector<std::uint64_t> numbers_;
};

} // namespace

void put_platform_channels(parameter_tree& tree, const strata::data_group& root,
                           std::span<const analog_column> columns) {
    auto* platforms = tree.find("FORCE_PLATFORM");
    auto* item = platforms ? platforms->find("CHANNEL") : nullptr;
    if (!item || item->type == element_type::character)
        return;
    const auto table = tree.as_table();
    const auto* former = table.find("FORCE_PLATFORM", "CHANNEL");
    const new_numbers numbers(root, columns);
    std::vector<std::int64_t> channels;
    bool changed = false;
    for (std::uint64_t i = 0; i < former->element_count(); ++i) {
        const auto number = former->count(i);
        const auto renumbered = number ? numbers.of(*number) : 0;
        changed = changed || (number && renumbered != *number);
        channels.push_back(static_cast<std::int64_t>(renumbered));
    }
    if (changed)
        set_words(*item, channels, item->extents);
}

} // namespace c3d
