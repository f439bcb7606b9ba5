#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <anvil/status.hpp>

#include <strata/data_store.hpp>

#include "tests/cpp/c3d/support/bytes.hpp"
#include "tests/cpp/c3d/support/memory_device.hpp"

namespace c3d_test {

/// What the importer made of a file.
struct reading {
    anvil::status status;
    strata::data_store store;
    std::vector<std::string> warnings; ///< lines of the log

    [[nodiscard]] std::vector<double> values(std::string_view set) const;
    /// Samples of one row of a set: component × channel.
    [[nodiscard]] std::vector<double> row(std::string_view set, std::size_t component,
                                          std::size_t channel) const;
    [[nodiscard]] std::vector<std::int64_t> shape(std::string_view set) const;
    // Of an attribute of a set or a group.
    [[nodiscard]] std::vector<std::string> texts(std::string_view owner,
                                                 std::string_view name) const;
    [[nodiscard]] std::vector<double> numbers(std::string_view owner, std::string_view name) const;
    [[nodiscard]] strata::data_attribute attribute(std::string_view owner,
                                                   std::string_view name) const;
    [[nodiscard]] bool warns_about(std::string_view part) const;
};

inline constexpr std::string_view points_set = "Format/Data/Points";
inline constexpr std::string_view analogs_set = "Format/Data/Analogs";

/// Reads with the importer, without the units.
[[nodiscard]] reading read(memory_device& device);
[[nodiscard]] reading read(byte_vector bytes);

} // namespace c3d_test
