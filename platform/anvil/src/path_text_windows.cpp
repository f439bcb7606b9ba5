#include <anvil/path_text.hpp>

#include <windows.h>

namespace anvil {

std::string text_of_path(const std::filesystem::path& path) {
    const std::wstring& wide = path.native();
    const int wide_length = static_cast<int>(wide.size());
    // Without WC_ERR_INVALID_CHARS, so that a name that is no valid UTF-16 still gives a text for a
    // message.
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), wide_length, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), wide_length, text.data(), length, nullptr,
                        nullptr);
    return text;
}

std::filesystem::path path_from_text(std::string_view text) {
    const int text_length = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), text_length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), text_length, wide.data(), length);
    return wide;
}

} // namespace anvil
