#pragma once

#include <utility>

#include "plugins/c3d/parameters/parameter_table.hpp"
#include "tests/cpp/c3d/support/parameter_writer.hpp"

namespace c3d_test {

/// The parameters of a section, together with its bytes, to which they refer.
struct table_of {
    explicit table_of(const parameter_writer& writer) : section(writer.section()) {
        auto records = c3d::walk_records(section, {512, 0}, c3d::number_format::intel, notes);
        table = c3d::parameter_table(std::move(records), notes);
    }
    table_of(const table_of&) = delete;
    table_of& operator=(const table_of&) = delete;

    byte_vector section;
    schema::warnings notes;
    c3d::parameter_table table;
};

} // namespace c3d_test
