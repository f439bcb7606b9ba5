#include "platform/strata/src/elements/page_memory.hpp"

#include <limits>

#include <windows.h>

namespace strata::detail {

std::byte* map_pages(std::size_t bytes) noexcept {
    // Reserved with room for the alignment, released, and taken again at the aligned place inside.
    // Another thread may have taken that place in between, so a few attempts are made.
    for (int attempt = 0; attempt < 8; ++attempt) {
        void* reserved = ::VirtualAlloc(nullptr, bytes + large_page, MEM_RESERVE, PAGE_NOACCESS);
        if (!reserved)
            return nullptr;
        const auto address = reinterpret_cast<std::uintptr_t>(reserved);
        const auto aligned = (address + large_page - 1) / large_page * large_page;
        ::VirtualFree(reserved, 0, MEM_RELEASE);
        void* block = ::VirtualAlloc(reinterpret_cast<void*>(aligned), bytes,
                                     MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
        if (block)
            return static_cast<std::byte*>(block);
    }
    return nullptr;
}

void unmap_pages(std::byte* memory, std::size_t) noexcept { ::VirtualFree(memory, 0, MEM_RELEASE); }

std::uint64_t physical_memory() noexcept {
    MEMORYSTATUSEX memory{};
    memory.dwLength = sizeof(memory);
    if (!::GlobalMemoryStatusEx(&memory))
        return std::numeric_limits<std::uint64_t>::max();
    return memory.ullTotalPhys;
}

} // namespace strata::detail
