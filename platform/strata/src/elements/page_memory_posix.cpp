#include "platform/strata/src/elements/page_memory.hpp"

#include <cstdint>
#include <limits>

#include <sys/mman.h>
#include <unistd.h>

namespace strata::detail {

std::byte* map_pages(std::size_t bytes) noexcept {
    // More address space than asked for, of which the part before and behind the aligned block is
    // given back.
    const auto total = bytes + large_page;
    if (total < bytes)
        return nullptr;
    void* mapped = ::mmap(nullptr, total, PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapped == MAP_FAILED)
        return nullptr;

    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const auto address = reinterpret_cast<std::uintptr_t>(mapped);
    const auto head = (large_page - address % large_page) % large_page;
    const auto kept = (bytes + page - 1) / page * page;
    auto* block = static_cast<std::byte*>(mapped) + head;
    if (head != 0)
        ::munmap(mapped, head);
    if (total > head + kept)
        ::munmap(block + kept, total - head - kept);
    // A hint: without large pages the block works the same.
    static_cast<void>(::madvise(block, kept, MADV_HUGEPAGE));
    return block;
}

void unmap_pages(std::byte* memory, std::size_t bytes) noexcept {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    ::munmap(memory, (bytes + page - 1) / page * page);
}

std::uint64_t physical_memory() noexcept {
    const auto pages = ::sysconf(_SC_PHYS_PAGES);
    const auto page = ::sysconf(_SC_PAGESIZE);
    if (pages <= 0 || page <= 0)
        return std::numeric_limits<std::uint64_t>::max();
    return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(page);
}

} // namespace strata::detail
