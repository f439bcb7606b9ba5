#include "platform/strata/src/elements/memory_block.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

#include "platform/strata/src/elements/page_memory.hpp"

namespace strata::detail {

namespace {

// Below this a block is as cheap from the heap, and the rounding to pages would weigh.
constexpr std::size_t smallest_mapped_block = 2 * large_page;

std::atomic<std::uint64_t> bytes_held{0};

std::uint64_t memory_limit() noexcept {
    static const std::uint64_t limit = physical_memory();
    return limit;
}

void account(std::size_t bytes) {
    if (bytes > memory_limit())
        throw std::bad_alloc{};
    if (bytes_held.fetch_add(bytes, std::memory_order_relaxed) > memory_limit() - bytes) {
        bytes_held.fetch_sub(bytes, std::memory_order_relaxed);
        throw std::bad_alloc{};
    }
}

std::byte* take(std::size_t bytes, initial_content content) noexcept {
    if (bytes >= smallest_mapped_block)
        return map_pages(bytes);
    // One byte at least: an empty block has an address too.
    const auto size = bytes == 0 ? 1 : bytes;
    void* memory = content == initial_content::zero ? std::calloc(size, 1) : std::malloc(size);
    return static_cast<std::byte*>(memory);
}

} // namespace

memory_block::memory_block(std::size_t bytes, initial_content content)
    : data_(nullptr), bytes_(bytes) {
    account(bytes);
    data_ = take(bytes, content);
    if (data_)
        return;
    bytes_held.fetch_sub(bytes, std::memory_order_relaxed);
    throw std::bad_alloc{};
}

memory_block::~memory_block() {
    if (!data_)
        return;
    if (bytes_ >= smallest_mapped_block) {
        unmap_pages(data_, bytes_);
    } else {
        std::free(data_);
    }
    bytes_held.fetch_sub(bytes_, std::memory_order_relaxed);
}

void require_memory(std::uint64_t count, std::size_t size) {
    if (size != 0 && count > memory_limit() / size)
        throw std::bad_alloc{};
}

} // namespace strata::detail
