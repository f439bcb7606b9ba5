#include "platform/anvil/src/write_file.hpp"

namespace anvil {

void write_file::close() noexcept {
    file_.close();
    old_.close();
    if (!temporary_.empty())
        remove_temporary();
    temporary_.clear();
    failure_.clear();
}

io_result write_file::write(std::span<const std::byte> bytes) noexcept {
    if (!is_open())
        return {0, std::make_error_code(std::errc::bad_file_descriptor)};
    const auto result = write_bytes(bytes);
    if (result.error && !failure_)
        failure_ = result.error;
    return result;
}

std::error_code write_file::commit() noexcept {
    if (!is_open())
        return std::make_error_code(std::errc::bad_file_descriptor);
    auto failure = failure_ ? failure_ : replace_destination();
    if (!failure)
        temporary_.clear();
    close();
    return failure;
}

} // namespace anvil
