#pragma once

#include <cstddef>
#include <new>

namespace strata_test {

/// While it lives, allocations are counted, and none fails.
class allocation_count {
  public:
    allocation_count() noexcept;
    allocation_count(const allocation_count&) = delete;
    allocation_count& operator=(const allocation_count&) = delete;
    ~allocation_count();

    [[nodiscard]] std::size_t now() const noexcept;
};

/// While it lives, the allocation with this index (from 0) made by operator new anywhere in the
/// process fails, once.
class failing_new {
  public:
    explicit failing_new(std::size_t index) noexcept;
    failing_new(const failing_new&) = delete;
    failing_new& operator=(const failing_new&) = delete;
    ~failing_new();
};

/// How many allocations operator new makes during `attempt`, which is a measure of its work.
template <typename Attempt> std::size_t count_allocations(Attempt attempt) {
    const allocation_count counted;
    attempt();
    return counted.now();
}

/// Runs `attempt` once for each allocation that it makes, letting that one fail, and `check` after
/// each failure; then once with nothing failing. Gives the number of failures.
template <typename Attempt, typename Check>
std::size_t for_each_failing_allocation(Attempt attempt, Check check) {
    for (std::size_t index = 0;; ++index) {
        bool failed = false;
        try {
            const failing_new arranged{index};
            attempt();
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        if (!failed)
            return index;
        check();
    }
}

} // namespace strata_test
