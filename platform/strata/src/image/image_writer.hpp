#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include <strata/plugin/channel_buffer.hpp>

#include "platform/strata/src/tree/group_node.hpp"

namespace strata::detail {

/// Writes the tree of an image, or only counts its bytes.
class image_writer {
  public:
    /// Counts.
    image_writer() noexcept = default;
    /// Writes to `target`, which has room for all.
    explicit image_writer(std::span<std::byte> target) noexcept : target_(target) {}

    void put_group(const group_node& group);

    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

  private:
    void put_bytes(const void* bytes, std::size_t count) noexcept;
    template <typename Number> void put(Number number) noexcept {
        static_assert(std::is_arithmetic_v<Number>);
        put_bytes(&number, sizeof number);
    }
    void put_type(data_type type) noexcept { put(static_cast<std::int32_t>(type)); }
    void put_text(std::string_view text) noexcept;
    void put_attributes(const attribute_list& attributes);
    void put_attribute(const attribute_node& attribute);
    void put_single_value(const attribute_node& attribute);
    void put_content(const counted_ptr<set_content>& content);
    void put_array(const element_array& array);
    void put_row(const channel_buffer& row);

    std::span<std::byte> target_;
    std::uint64_t size_ = 0;
    std::unordered_map<const set_content*, std::uint64_t> contents_;
    // By place and length: rows of different lengths may begin at one place.
    std::map<std::pair<const std::byte*, std::uint64_t>, std::uint64_t> buffers_;
};

} // namespace strata::detail
