#include "schema/read_attribute.hpp"

#include <cstddef>

#include <anvil/logging.hpp>
#include <strata/data_converter.hpp>
#include <strata/strata_logger.hpp>

namespace schema {

namespace {

/// Texts that the store hands out, given back whatever happens. None when the attribute holds
/// something else.
class read_text_buffer {
  public:
    explicit read_text_buffer(const strata::data_attribute& attribute)
        : shape_(attribute.shape()),
          texts_(static_cast<std::size_t>(shape_.element_count()), nullptr) {
        filled_ = attribute.read_value(buffer(), strata::data_type::string);
    }
    read_text_buffer(const read_text_buffer&) = delete;
    read_text_buffer& operator=(const read_text_buffer&) = delete;
    ~read_text_buffer() {
        if (filled_)
            strata::data_converter_string_clean_buffer(shape_, buffer());
    }

    [[nodiscard]] bool filled() const noexcept { return filled_; }

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

void log_unreadable_attribute() noexcept {
    anvil::log_line(*get_strata_logger(), anvil::log_level::error, unreadable_attribute);
}

bool holds_numbers(const strata::data_attribute& attribute) {
    if (!attribute)
        return false;
    const auto kind = strata::element_kind(attribute.type());
    return kind != strata::data_type::string && kind != strata::data_type::invalid;
}

std::vector<std::string> read_texts(const strata::data_attribute& attribute) {
    if (!attribute || attribute.shape().element_count() == 0)
        return {};
    const read_text_buffer buffer(attribute);
    if (!buffer.filled())
        log_unreadable_attribute();
    return buffer.texts();
}

} // namespace schema
