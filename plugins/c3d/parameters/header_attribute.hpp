#pragma once

#include <string_view>

#include <fmt/format.h>

#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>

#include "schema/names.hpp"

namespace c3d {

/// An attribute of the header of `format`; denotes nothing where there is none, or no header.
[[nodiscard]] inline strata::data_attribute header_attribute(const strata::data_group& format,
                                                             std::string_view name) {
    return format.retrieve_attribute(fmt::format("{}/{}", schema::name::header, name));
}

} // namespace c3d
