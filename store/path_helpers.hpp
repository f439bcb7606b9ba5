#pragma once

// Groups by path, and the set operations that go with them.

#include <string>
#include <string_view>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace mox {

/// "Impossible to retrieve group with path : '<path>'", with `ending` behind it: RuntimeError.
[[noreturn]] void throw_no_such_group(std::string_view path, std::string_view ending = {});

/// "Impossible to delete set with path : '<path>'": RuntimeError.
[[noreturn]] void throw_no_such_set_to_delete(std::string_view path);

/// The group at `path` below `parent`; RuntimeError that names the path when there is none.
[[nodiscard]] strata::data_group retrieve_group(const strata::data_group& parent,
                                                std::string_view path);

/// The group at the path that the components form.
[[nodiscard]] strata::data_group retrieve_group(const strata::data_group& parent,
                                                std::string_view first, std::string_view second);
[[nodiscard]] strata::data_group retrieve_group(const strata::data_group& parent,
                                                std::string_view first, std::string_view second,
                                                std::string_view third);

/// The group at `path` below `parent`, created with the groups on the way to it when it is missing.
strata::data_group retrieve_or_create_group(strata::data_group parent, std::string_view path);

/// Removes `set` from `group`; RuntimeError that names the set when the group has none of that
/// name.
void delete_set(strata::data_group group, const strata::data_set& set);

/// Removes every set of `group`.
void delete_sets(strata::data_group group);

/// Makes `set`, a member of `source`, the member `name` of `target` instead. Values and attributes
/// are kept. When `target` has a set or group of that name: RuntimeError, nothing changed.
void move_set(strata::data_group target, strata::data_group source, const strata::data_set& set,
              const std::string& name);

/// Every set of `group`, in the store's order.
[[nodiscard]] std::vector<strata::data_set> sets_of(const strata::data_group& group);

} // namespace mox
