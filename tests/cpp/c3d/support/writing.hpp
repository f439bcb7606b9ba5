#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

#include "tests/cpp/c3d/support/bytes.hpp"
#include "tests/cpp/c3d/support/reading.hpp"

namespace c3d_test {

/// A device that keeps what is written, and may be full from a byte on.
class filling_device final : public anvil::io_device {
  public:
    byte_vector bytes;
    std::size_t calls = 0;
    std::uint64_t room = std::numeric_limits<std::uint64_t>::max();

    [[nodiscard]] bool is_open() const noexcept override { return true; }
    [[nodiscard]] std::uint64_t size() const noexcept override { return bytes.size(); }
    [[nodiscard]] anvil::io_result read_at(std::uint64_t, std::span<std::byte>) noexcept override {
        return {};
    }
    [[nodiscard]] anvil::io_result write(std::span<const std::byte> more) noexcept override;
    [[nodiscard]] std::string name() const override { return "written.c3d"; }
};

/// What the exporter made of an acquisition.
struct writing {
    anvil::status status;
    byte_vector bytes;
    std::vector<std::string> warnings; ///< lines of the log

    [[nodiscard]] bool warns_about(std::string_view part) const;
    [[nodiscard]] byte_vector part(std::size_t offset, std::size_t count) const;
};

[[nodiscard]] writing write(const strata::data_store& acquisition);
/// Into a device; the bytes stay there.
[[nodiscard]] writing write(const strata::data_store& acquisition, filling_device& device);

/// Reads a file and makes the groups of its channels, as opening an acquisition does.
[[nodiscard]] reading opened(byte_vector bytes);

/// An acquisition that was never a file.
struct new_acquisition {
    strata::data_store store;

    /// `rate` frames a second, `ratio` analog samples in each.
    new_acquisition(std::int64_t frames, double rate, int ratio = 1);

    /// A point with x, y, z for each frame, frame by frame.
    strata::data_set add_point(const std::string& group, const std::string& label,
                               const std::vector<double>& samples);
    strata::data_set add_analog(const std::string& label, const std::vector<double>& samples);
    strata::data_set add_event(const std::string& context, const std::string& label,
                               const std::vector<float>& times);
    [[nodiscard]] strata::data_group group(std::string_view path) const;

  private:
    std::int64_t frames_;
    std::int32_t points_ = 0;
    std::int32_t channels_ = 0;
};

/// Gives an attribute of a set or group another value.
void change_number(strata::data_set set, const char* name, double value);

} // namespace c3d_test
