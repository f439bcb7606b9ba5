#pragma once

#include <cstddef>
#include <cstdint>

namespace strata::detail {

/// Memory straight from the system, for blocks that large pages pay off for. It reads as zero and
/// takes no memory of the machine until it is touched. It starts at a multiple of large_page bytes.
/// Null when the system has none.
[[nodiscard]] std::byte* map_pages(std::size_t bytes) noexcept;

/// Gives back what map_pages(bytes) returned.
void unmap_pages(std::byte* memory, std::size_t bytes) noexcept;

/// Bytes of memory in the machine; the largest number when the system does not tell.
[[nodiscard]] std::uint64_t physical_memory() noexcept;

/// Size of the pages that make large blocks cheap to walk through.
inline constexpr std::size_t large_page = std::size_t{2} << 20U;

} // namespace strata::detail
