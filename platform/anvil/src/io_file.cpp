#include <anvil/io_file.hpp>

#include <anvil/path_text.hpp>

#include "platform/anvil/src/read_file.hpp"
#include "platform/anvil/src/write_file.hpp"

namespace anvil {

/// At most one of reader and writer is open.
struct io_file::state {
    read_file reader;
    write_file writer;
    std::filesystem::path path; ///< of the last open, whether it succeeded or not
    std::error_code failure;    ///< of the last open, or the first one since then

    void keep_first(std::error_code error) noexcept {
        if (!failure)
            failure = error;
    }
    std::error_code remember(std::error_code error) noexcept {
        keep_first(error);
        return error;
    }
    io_result remember(io_result result) noexcept {
        keep_first(result.error);
        return result;
    }
};

io_file::io_file() : state_{std::make_unique<state>()} {}

io_file::~io_file() = default;

void io_file::open(const std::filesystem::path& path, int mode) {
    close();
    state_->path = path;
    state_->failure = {};
    if (mode == io_read)
        state_->failure = state_->reader.open(path);
    if (mode == io_write)
        state_->failure = state_->writer.open(path);
}

void io_file::close() {
    state_->reader.close();
    state_->writer.close();
}

std::error_code io_file::failure() const noexcept { return state_->failure; }

bool io_file::is_open() const noexcept {
    return state_->reader.is_open() || state_->writer.is_open();
}

std::uint64_t io_file::size() const noexcept { return state_->reader.size(); }

io_result io_file::read_at(std::uint64_t offset, std::span<std::byte> buffer) noexcept {
    return state_->remember(state_->reader.read_at(offset, buffer));
}

io_result io_file::write(std::span<const std::byte> bytes) noexcept {
    return state_->remember(state_->writer.write(bytes));
}

std::error_code io_file::commit() noexcept { return state_->remember(state_->writer.commit()); }

std::string io_file::name() const { return text_of_path(state_->path); }

} // namespace anvil
