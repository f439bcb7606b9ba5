#include "layout/read_attribute.hpp"

#include <cstddef>

#include <strata/data_converter.hpp>

namespace acquisition_layout {

namespace {

/// Texts that the store handed out, given back whatever happens.
class read_text_buffer {
  public:
    explicit read_text_buffer(const strata::data_attribute& attribute)
        : shape_(attribute.shape()),
          texts_(static_cast<std::size_t>(shape_.element_count()), nullptr) {
        filled_ = !texts_.empty() && attribute.read_value(buffer(), strata::data_type::string);
    }
    read_text_buffer(const read_text_buffer&) = delete;
    read_text_buffer& operator=(const read_text_buffer&) = delete;
    ~read_text_buffer() {
        if (filled_)
            strata::data_converter_string_clean_buffer(shape_, buffer());
    }

    [[nodiscard]] std::vector<std::string> texts() const {
        if (!filled_)
            return {};
        return {texts_.begin(), texts_.end()};
    }

  private:
    [[nodiscard]] void* buffer() noexcept { return static_cast<void*>(texts_.data()); }

    strata::data_shape shape_;
    std::vector<const char*> texts_;
    bool filled_ = false;
};

} // namespace

std::vector<std::string> read_texts(const strata::data_attribute& attribute) {
    if (!attribute || strata::element_kind(attribute.type()) != strata::data_type::string)
        return {};
    return read_text_buffer(attribute).texts();
}

} // namespace acquisition_layout
