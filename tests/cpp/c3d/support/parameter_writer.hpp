#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/cpp/c3d/support/bytes.hpp"

namespace c3d_test {

/// Writes the records of a parameter section one after the other.
class parameter_writer {
  public:
    explicit parameter_writer(c3d::number_format format = c3d::number_format::intel)
        : format_(format) {}

    // Group ids are positive. A name that begins with "-" is locked. Without dimensions a parameter
    // is a single value.
    parameter_writer& group(int id, std::string_view name, std::string_view description = "");
    parameter_writer& words(int id, std::string_view name, const std::vector<int>& values,
                            const std::vector<int>& dimensions = {});
    parameter_writer& reals(int id, std::string_view name, const std::vector<float>& values,
                            const std::vector<int>& dimensions = {});
    parameter_writer& bytes(int id, std::string_view name, const std::vector<int>& values,
                            const std::vector<int>& dimensions = {});
    /// Texts of `width` characters: one dimension for the width, another for their number.
    parameter_writer& texts(int id, std::string_view name, const std::vector<std::string>& values,
                            int width);
    /// One text, one dimension.
    parameter_writer& text(int id, std::string_view name, std::string_view value);
    parameter_writer& record(int id, std::string_view name, int type,
                             const std::vector<int>& dimensions, const byte_vector& data,
                             std::string_view description = "");
    /// Anything, as the next bytes of the section.
    parameter_writer& raw(const byte_vector& bytes);
    /// Changes the distance from the last record to the next one.
    parameter_writer& with_next(int distance);

    [[nodiscard]] const byte_vector& records() const { return records_; }
    /// The records behind a head, padded to whole blocks; at least four zero bytes end them.
    [[nodiscard]] byte_vector section() const;

  private:
    c3d::number_format format_;
    byte_vector records_;
    std::size_t next_field_ = 0;
};

} // namespace c3d_test
