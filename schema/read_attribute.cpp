#include "schema/read_attribute.hpp"

#include <cstddef>
#include <utility>

#include <anvil/logging.hpp>
#include <strata/access/read_texts.hpp>
#include <strata/strata_logger.hpp>

namespace schema {

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
    auto texts = strata::read_texts(attribute);
    if (!texts) {
        log_unreadable_attribute();
        return {};
    }
    return *std::move(texts);
}

std::string read_text(const strata::data_attribute& attribute) {
    auto texts = schema::read_texts(attribute);
    return texts.empty() ? std::string() : std::move(texts.front());
}

} // namespace schema
