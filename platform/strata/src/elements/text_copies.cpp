#include "platform/strata/src/elements/text_copies.hpp"

#include <cstring>
#include <new>

namespace strata::detail {

char* copy_text(std::string_view text) {
    auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (!copy)
        throw std::bad_alloc{};
    if (!text.empty())
        std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

void text_copies::add(std::string_view text) { copies_.emplace_back(copy_text(text)); }

void text_copies::hand_over(void* buffer) noexcept {
    auto** texts = static_cast<const char**>(buffer);
    for (auto& copy : copies_)
        *texts++ = copy.release();
    copies_.clear();
}

std::string_view text_at(const void* buffer, std::size_t index) noexcept {
    const auto* text = static_cast<const char* const*>(buffer)[index];
    return text ? std::string_view{text} : std::string_view{};
}

} // namespace strata::detail
