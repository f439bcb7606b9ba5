#include "tests/cpp/strata/support/failing_new.hpp"

#include <cstdlib>
#include <limits>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

std::size_t until_failure = never;

bool fails_now() noexcept {
    if (until_failure == never)
        return false;
    if (until_failure > 0) {
        --until_failure;
        return false;
    }
    until_failure = never;
    return true;
}

} // namespace

strata_test::failing_new::failing_new(std::size_t index) noexcept { until_failure = index; }

strata_test::failing_new::~failing_new() { until_failure = never; }

strata_test::allocation_count::allocation_count() noexcept { until_failure = never - 1; }

strata_test::allocation_count::~allocation_count() { until_failure = never; }

std::size_t strata_test::allocation_count::now() const noexcept {
    return never - 1 - until_failure;
}

// The process's operators, for the libraries too.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return fails_now() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
    void* memory = operator new(size, std::nothrow);
    if (!memory)
        throw std::bad_alloc{};
    return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
