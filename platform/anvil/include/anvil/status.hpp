#pragma once

#include <string>
#include <vector>

#include <anvil/export.hpp>

namespace anvil {

/// Outcome of an import, an export or a computation: success, or a failure with one or more
/// messages. A value type; a failure may nest the failures that caused it.
class ANVIL_EXPORT status {
  public:
    /// Success.
    status() noexcept = default;

    /// A failure described by `message`: what failed, where, and what was expected.
    [[nodiscard]] static status failure(std::string message);

    /// A failure for want of memory.
    [[nodiscard]] static status out_of_memory(std::string message);

    /// Adds the outcome of a step. A failed step makes this status a failure and its messages
    /// follow those already held, in order; a successful one changes nothing. Returns *this.
    status& add(status step);

    /// True on success.
    explicit operator bool() const noexcept { return messages_.empty(); }

    /// True for a failure in which memory was short.
    [[nodiscard]] bool is_out_of_memory() const noexcept { return out_of_memory_; }

    /// All failure messages in order, joined by `separator`; empty on success.
    [[nodiscard]] std::string message(const std::string& separator) const;

  private:
    std::vector<std::string> messages_; // empty: success
    bool out_of_memory_ = false;
};

} // namespace anvil
