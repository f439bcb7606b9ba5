#pragma once

#include <cstddef>

#include <strata/data_group.hpp>

#include "plugins/c3d/bytes/number_format.hpp"

namespace c3d {

/// How a file that is written holds its numbers and its samples.
struct written_form {
    number_format format = number_format::intel;
    sample_storage storage = sample_storage::real;

    /// Bytes of a point's number and of an analog sample. Rotations are reals in every form.
    [[nodiscard]] std::size_t sample_bytes() const noexcept {
        return storage == sample_storage::real ? 4 : 2;
    }
};

/// What `WantedStorage` and `WantedProcessor` of the header of `format` ask for; what they do not
/// say is Intel numbers and real samples.
[[nodiscard]] written_form wanted_form(const strata::data_group& format);

/// Whether the file that `format` was read from held integer samples.
[[nodiscard]] bool was_integer(const strata::data_group& format);

} // namespace c3d
