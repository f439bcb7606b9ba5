#include <anvil/io_memory.hpp>

#include <algorithm>
#include <exception>
#include <utility>

namespace anvil {

io_memory::io_memory(std::span<const std::byte> content, std::string name)
    : content_(content), name_(std::move(name)) {}

io_memory::~io_memory() = default;

io_result io_memory::read_at(std::uint64_t offset, std::span<std::byte> buffer) noexcept {
    if (offset >= content_.size())
        return {};
    const auto rest = content_.subspan(static_cast<std::size_t>(offset));
    const auto count = std::min(rest.size(), buffer.size());
    std::copy_n(rest.begin(), count, buffer.begin());
    return {count, {}};
}

io_result io_memory::write(std::span<const std::byte> bytes) noexcept {
    try {
        written_.insert(written_.end(), bytes.begin(), bytes.end());
    } catch (const std::exception&) { // also a length that no vector has
        failure_ = std::make_error_code(std::errc::not_enough_memory);
        return {0, failure_};
    }
    return {bytes.size(), {}};
}

} // namespace anvil
