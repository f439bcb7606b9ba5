#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace strata::detail {

/// What a new block holds.
enum class initial_content {
    /// Zero bytes; a large block takes no memory of the machine for them until it is touched.
    zero,
    whatever ///< anything
};

/// Memory for elements, aligned for every element type.
class memory_block {
  public:
    /// Throws std::bad_alloc when the system has no memory, or when all blocks together would
    /// outgrow the machine's memory: systems promise more than they have and end the process that
    /// comes for it.
    memory_block(std::size_t bytes, initial_content content);
    memory_block(memory_block&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), bytes_(other.bytes_) {}
    memory_block& operator=(memory_block&&) = delete;
    ~memory_block();

    [[nodiscard]] std::byte* data() const noexcept { return data_; }

  private:
    std::byte* data_;
    std::size_t bytes_;
};

/// Throws std::bad_alloc unless the machine has memory for `count` elements of `size` bytes.
void require_memory(std::uint64_t count, std::size_t size);

} // namespace strata::detail
