#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <strata/data_group.hpp>

namespace mox {

/// How a C3D file holds its numbers.
struct file_form {
    std::string storage;    ///< of samples: "real" or "integer"
    std::int32_t processor; ///< 84, 85 or 86, as the attribute "Processor" of the header says it
};

/// The form of the file that an acquisition was read from; reals of Intel where it says nothing.
[[nodiscard]] file_form source_form(const strata::data_group& root);

/// "intel", "dec" or "mips".
[[nodiscard]] std::string_view processor_name(std::int32_t processor) noexcept;

/// The form that is wanted of a file, where anything is.
struct wanted_form {
    std::optional<std::string> storage;
    std::optional<std::int32_t> processor;
};

/// What words ask for: `storage` "real", "integer" or "source", `processor` "intel", "dec", "mips"
/// or "source", which is the form of the file that the acquisition was read from; empty ones ask
/// for nothing. ValueError for any other.
[[nodiscard]] wanted_form wanted_form_of(const strata::data_group& root, std::string_view storage,
                                         std::string_view processor);

/// Tells the exporter by attributes of the header.
void ask_for_form(strata::data_group root, const wanted_form& form);

} // namespace mox
