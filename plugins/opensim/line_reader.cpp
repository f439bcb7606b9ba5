#include "plugins/opensim/line_reader.hpp"

#include <algorithm>
#include <cstring>
#include <span>
#include <stdexcept>

#include <fmt/format.h>

#include "plugins/opensim/text_error.hpp"

namespace opensim {

namespace {

constexpr std::size_t piece = std::size_t{1} << 20U;

} // namespace

line_reader::line_reader(anvil::io_device& device)
    : device_(device), size_(device.size()),
      buffer_(static_cast<std::size_t>(std::clamp<std::uint64_t>(size_, 1, piece))) {}

bool line_reader::next() {
    if (is_put_back_) {
        is_put_back_ = false;
        return true;
    }
    std::size_t searched = 0;
    for (;;) {
        const auto* from = buffer_.data() + begin_;
        const auto* found = end_ - begin_ > searched
                                ? std::memchr(from + searched, '\n', end_ - begin_ - searched)
                                : nullptr;
        if (found) {
            is_complete_ = true;
            line_ = take(static_cast<std::size_t>(static_cast<const char*>(found) - from), 1);
            break;
        }
        searched = end_ - begin_;
        if (fill())
            continue;
        if (searched == 0)
            return false;
        is_complete_ = false;
        line_ = take(searched, 0);
        break;
    }
    if (const auto place = line_.find('\0'); place != std::string_view::npos) {
        throw text_error(number_, fmt::format("byte {} of the line", place + 1), "text", "NUL");
    }
    return true;
}

bool line_reader::next_with_content() {
    while (next()) {
        if (!is_blank(line_))
            return true;
    }
    return false;
}

/// More of the file behind what is in the buffer; false at its end.
bool line_reader::fill() {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    if (end_ > longest_line) {
        throw text_error(number_ + 1, "the length of the line",
                         fmt::format("at most {} bytes", longest_line), "more");
    }
    if (end_ == buffer_.size())
        buffer_.resize(2 * buffer_.size());
    const auto free = std::span(buffer_).subspan(end_);
    const auto result = device_.read_at(offset_, std::as_writable_bytes(free));
    if (result.error) {
        throw std::runtime_error(fmt::format("byte {}: reading failed: {}", offset_ + result.bytes,
                                             result.error.message()));
    }
    end_ += result.bytes;
    offset_ += result.bytes;
    return result.bytes != 0;
}

std::string_view line_reader::take(std::size_t length, std::size_t end_length) noexcept {
    std::string_view line(buffer_.data() + begin_, length);
    begin_ += length + end_length;
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return ++number_ == 1 ? without_mark(line) : line;
}

bool is_blank(std::string_view line) noexcept {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

std::string_view without_mark(std::string_view text) noexcept {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.starts_with(mark) ? text.substr(mark.size()) : text;
}

} // namespace opensim
