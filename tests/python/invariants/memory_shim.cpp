// Lets C++ code run out of memory. To be loaded with LD_PRELOAD; a program arranges what fails:
//
//     mox_fail_allocation(index)   the allocation with this index, from 0, that operator new is
//                                  asked for from now on fails, once; none for a negative index
//     mox_allocation_failed()      1 when it did since then, else 0

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#define SHIM_EXPORT __attribute__((visibility("default")))

namespace {

std::atomic<long> until_failure{-1};
std::atomic<bool> failed{false};

bool fails_now() noexcept {
    if (until_failure.load() < 0 || until_failure.fetch_sub(1) != 0)
        return false;
    failed = true;
    return true;
}

} // namespace

extern "C" SHIM_EXPORT void mox_fail_allocation(long index) {
    failed = false;
    until_failure = index;
}

extern "C" SHIM_EXPORT int mox_allocation_failed() { return failed ? 1 : 0; }

SHIM_EXPORT void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return fails_now() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

SHIM_EXPORT void* operator new(std::size_t size) {
    void* memory = operator new(size, std::nothrow);
    if (!memory)
        throw std::bad_alloc{};
    return memory;
}

SHIM_EXPORT void operator delete(void* memory) noexcept { std::free(memory); }

SHIM_EXPORT void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

SHIM_EXPORT void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
