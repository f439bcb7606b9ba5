#include <strata/data_converter.hpp>

#include <cstdlib>

namespace strata {

void data_converter_string_clean_buffer(const data_shape& shape, void* buffer) noexcept {
    auto** texts = static_cast<char**>(buffer);
    for (std::uint64_t i = 0; i < shape.element_count(); ++i) {
        std::free(texts[i]);
        texts[i] = nullptr;
    }
}

} // namespace strata
