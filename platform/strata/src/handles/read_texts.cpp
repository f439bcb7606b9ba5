#include <strata/access/read_texts.hpp>

#include <cstddef>
#include <utility>

#include <strata/data_converter.hpp>

#include "platform/strata/src/handles/access.hpp"

namespace strata {

namespace {

/// Texts that the store hands out, given back whatever happens to their copies.
class text_buffer {
  public:
    explicit text_buffer(data_shape shape)
        : shape_(std::move(shape)),
          texts_(static_cast<std::size_t>(shape_.element_count()), nullptr) {}
    text_buffer(const text_buffer&) = delete;
    text_buffer& operator=(const text_buffer&) = delete;
    ~text_buffer() { data_converter_string_clean_buffer(shape_, data()); }

    [[nodiscard]] void* data() noexcept { return static_cast<void*>(texts_.data()); }
    [[nodiscard]] const std::vector<const char*>& texts() const noexcept { return texts_; }

  private:
    data_shape shape_;
    std::vector<const char*> texts_; // null until they are read
};

template <typename Source> std::optional<std::vector<std::string>> texts_of(const Source& source) {
    if (element_kind(source.type()) != data_type::string)
        return std::nullopt;
    text_buffer buffer{source.shape()};
    if (!source.read_value(buffer.data(), data_type::string))
        return std::nullopt;
    return std::vector<std::string>{buffer.texts().begin(), buffer.texts().end()};
}

} // namespace

std::optional<std::vector<std::string>> read_texts(const data_attribute& attribute) {
    return texts_of(attribute);
}

std::optional<std::vector<std::string>> read_texts(const data_selection& selection) {
    return texts_of(selection);
}

std::optional<std::string> read_text(const data_attribute& attribute) {
    if (attribute.shape().element_count() != 1)
        return std::nullopt;
    auto texts = texts_of(attribute);
    return texts ? std::optional{std::move(texts->front())} : std::nullopt;
}

std::optional<std::string> read_first_text(const data_attribute& attribute) {
    const auto* node = detail::access::node(attribute);
    if (!node || element_kind(node->type()) != data_type::string)
        return std::nullopt;
    const auto* elements = node->elements();
    if (!elements)
        return std::string(node->text());
    if (elements->extents().count() == 0)
        return std::nullopt;
    return elements->texts().empty() ? std::string() : elements->texts().front();
}

} // namespace strata
