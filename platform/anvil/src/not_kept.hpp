#pragma once

#include <system_error>

namespace anvil {

/// What the successor of a file has to take over from it.
enum class kept_part {
    owner,
    group,
    permissions,
    access_list,
    attribute, ///< an extended attribute that is no access list
};

/// The error that `part` of the old file cannot be kept because of `cause`, a number of the
/// system's own. Its message names both; it compares equal to what the cause compares equal to.
[[nodiscard]] std::error_code not_kept(kept_part part, int cause) noexcept;

/// The cause alone of an error of not_kept; any other error as it is.
[[nodiscard]] std::error_code cause_of(std::error_code failure) noexcept;

} // namespace anvil
