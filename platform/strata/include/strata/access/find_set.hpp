#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/export.hpp>

namespace strata {

/// Whether an attribute counts as equal to what is looked for.
using attribute_match = std::function<bool(const data_attribute&)>;

/// The first set of `group` whose attribute `attribute` is the single text `text`, compared byte
/// for byte; `matches` decides for attributes that are anything but a single text. A handle that
/// denotes nothing when there is none. The first search in a group takes a time in proportion to
/// its sets, every other one in proportion to the attributes of that name that changed meanwhile
/// and to those that `matches` has to decide on.
[[nodiscard]] STRATA_EXPORT data_set find_set(const data_group& group, std::string_view attribute,
                                              std::string_view text,
                                              const attribute_match& matches);

/// The same for a single number, which is read as int32; `matches` decides for all others.
[[nodiscard]] STRATA_EXPORT data_set find_set(const data_group& group, std::string_view attribute,
                                              std::int32_t number, const attribute_match& matches);

/// The texts that the attribute `attribute` of the sets of `group` is, each once, in the order of
/// the first sets that have them; sets without it do not count. Nothing when it is anything but a
/// single text for any of them. Takes a time in proportion to the texts, but for what find_set says
/// of the first search and of changes.
[[nodiscard]] STRATA_EXPORT std::optional<std::vector<std::string>>
different_texts(const data_group& group, std::string_view attribute);

} // namespace strata
