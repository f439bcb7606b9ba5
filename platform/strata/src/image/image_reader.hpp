#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include <strata/plugin/channel_buffer.hpp>

#include "platform/strata/src/tree/group_node.hpp"

namespace strata::detail {

/// Reads the tree of an image. Nothing in it is believed: what is no tree throws store_error. Bytes
/// are looked at once, so that it does not matter whether somebody changes them meanwhile.
class image_reader {
  public:
    explicit image_reader(std::span<const std::byte> tree) noexcept : rest_(tree) {}

    /// Fills the empty `root`.
    void read_tree(group_node& root);

  private:
    [[nodiscard]] std::span<const std::byte> take(std::uint64_t count);
    template <typename Number> [[nodiscard]] Number get();
    /// A count of things that take `least` bytes each at least.
    [[nodiscard]] std::uint64_t get_count(std::uint64_t least);
    [[nodiscard]] data_type get_type() { return static_cast<data_type>(get<std::int32_t>()); }
    [[nodiscard]] std::string get_text();
    [[nodiscard]] std::string get_name();

    void read_group(group_node& group);
    void read_attributes(attribute_list& attributes);
    [[nodiscard]] counted_ptr<attribute_node> read_attribute(const std::string& name);
    void read_single_value(attribute_node& attribute, data_type type);
    [[nodiscard]] counted_ptr<set_content> read_content();
    [[nodiscard]] element_layout read_layout();
    [[nodiscard]] element_array read_array(data_type type);
    [[nodiscard]] element_array read_texts(const element_layout& layout);
    [[nodiscard]] channel_buffer read_row(data_type type, std::uint64_t elements);
    void read_buffer();

    std::span<const std::byte> rest_;
    std::vector<counted_ptr<set_content>> contents_;
    std::vector<channel_buffer> buffers_;
};

} // namespace strata::detail
