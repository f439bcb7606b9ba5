#include "acquisition/files/unread_parts.hpp"

#include <fmt/format.h>

#include "schema/names.hpp"
#include "schema/partial_reading.hpp"
#include "store/swig_error.hpp"

namespace mox {

void require_complete(const strata::data_group& root) {
    const auto counts = schema::counts_of(schema::unread_of(root));
    if (!counts.empty())
        throw_runtime_error(
            fmt::format("Export to c3d failed : only a part of the file was read, and {} would be "
                        "lost. Read all of it to write it",
                        counts));
}

bool lacks_analogs(const strata::data_group& root) {
    return schema::unread_of_file(root).contain(schema::name::analogs);
}

} // namespace mox
