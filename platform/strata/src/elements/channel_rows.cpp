#include "platform/strata/src/elements/channel_rows.hpp"

#include <atomic>
#include <limits>
#include <new>
#include <utility>

namespace strata::detail {

/// Fills in what channel_buffer keeps to itself.
struct buffer_access {
    static channel_buffer make(std::shared_ptr<std::byte> elements, data_type stored,
                               std::uint64_t count) noexcept {
        channel_buffer row;
        row.elements_ = std::move(elements);
        row.stored_ = stored;
        row.count_ = count;
        return row;
    }
    static bool owned_alone(const channel_buffer& row) noexcept {
        if (row.elements_.use_count() != 1)
            return false;
        // Whoever dropped the last other share, perhaps in another thread, has read what it read.
        std::atomic_thread_fence(std::memory_order_acquire);
        return true;
    }
    static void set_count(channel_buffer& row, std::uint64_t count) noexcept { row.count_ = count; }
};

namespace {

// Rows start at multiples of a cache line.
constexpr std::uint64_t row_alignment = 64;

std::uint64_t checked_product(std::uint64_t left, std::uint64_t right) {
    if (right != 0 && left > std::numeric_limits<std::uint64_t>::max() / 2 / right)
        throw std::bad_alloc{};
    return left * right;
}

} // namespace

std::vector<channel_buffer> make_rows(data_type stored, std::uint64_t elements, std::uint64_t rows,
                                      initial_content content) {
    std::vector<channel_buffer> made;
    if (rows == 0)
        return made;
    require_memory(rows, sizeof(channel_buffer));
    made.reserve(rows);

    const auto row_bytes = checked_product(elements, element_size(stored));
    if (rows == 1) {
        auto block = std::make_shared<memory_block>(row_bytes, content);
        auto* data = block->data();
        made.push_back(buffer_access::make({std::move(block), data}, stored, elements));
        return made;
    }
    const auto step = (row_bytes + row_alignment - 1) / row_alignment * row_alignment;
    const auto block = std::make_shared<memory_block>(checked_product(step, rows), content);
    for (std::uint64_t i = 0; i < rows; ++i) {
        // Each row counts its own users, so that sharing one does not look like sharing all; each
        // keeps the block.
        std::shared_ptr<std::byte> data{block->data() + i * step, [block](std::byte*) noexcept {}};
        made.push_back(buffer_access::make(std::move(data), stored, elements));
    }
    return made;
}

bool owned_alone(const channel_buffer& row) noexcept { return buffer_access::owned_alone(row); }

void set_count(channel_buffer& row, std::uint64_t count) noexcept {
    buffer_access::set_count(row, count);
}

} // namespace strata::detail
