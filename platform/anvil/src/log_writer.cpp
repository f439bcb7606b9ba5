#include "platform/anvil/src/log_writer.hpp"

#include <utility>

namespace anvil {

namespace {

/// The first lines of `lines` that go to the file together: whole ones, so that one call of the
/// system writes them, and few enough for the file not to outgrow its full size by much.
std::string_view next_batch(std::string_view lines) noexcept {
    constexpr std::size_t usual_size = std::size_t{64} * 1024;
    if (lines.size() <= usual_size)
        return lines;
    auto end = lines.rfind('\n', usual_size - 1);
    if (end == std::string_view::npos)
        end = lines.find('\n'); // one line that is longer
    return end == std::string_view::npos ? lines : lines.substr(0, end + 1);
}

} // namespace

log_writer::log_writer(std::filesystem::path path, bool sets_aside,
                       clock::time_point (*now)() noexcept)
    : file_{std::move(path)}, sets_aside_{sets_aside}, now_{now} {}

void log_writer::write(std::string_view lines) noexcept {
    while (!lines.empty() && now_() >= retry_time_) {
        const auto batch = next_batch(lines);
        lines.remove_prefix(batch.size());
        if (make_ready() && append(batch))
            continue;
        file_.close();
        retry_time_ = now_() + pause;
    }
}

bool log_writer::is_full(std::uint64_t size) const noexcept {
    return sets_aside_ && size >= full_size && now_() >= rotation_time_;
}

bool log_writer::make_ready() noexcept {
    // More than one round when the file at the path is replaced by others, or full itself; not for
    // ever, though.
    for (int round = 0; round < 3; ++round) {
        if (!file_.is_open() && !file_.open())
            return false;
        const auto size = file_.size();
        if (size && !is_full(*size))
            return true;
        if (size && !file_.set_aside()) {
            rotation_time_ = now_() + pause;
            return true;
        }
        file_.close();
        line_is_broken_ = false;
    }
    return file_.open();
}

bool log_writer::append(std::string_view lines) noexcept {
    // The end that the broken line lacks, so that the next one is whole.
    if (line_is_broken_ && file_.append("\n") != 1)
        return false;
    line_is_broken_ = false;
    while (!lines.empty()) {
        const auto count = file_.append(lines);
        if (count == 0)
            return false;
        line_is_broken_ = lines[count - 1] != '\n';
        lines.remove_prefix(count);
    }
    return true;
}

} // namespace anvil
