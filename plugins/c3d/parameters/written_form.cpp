#include "plugins/c3d/parameters/written_form.hpp"

#include <cstdint>

#include "plugins/c3d/parameters/header_attribute.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

written_form wanted_form(const strata::data_group& format) {
    written_form form;
    const auto storage = schema::read_text(header_attribute(format, attribute::wanted_storage));
    if (storage == "integer")
        form.storage = sample_storage::integer;
    const auto processor =
        schema::read_number<std::int32_t>(header_attribute(format, attribute::wanted_processor));
    for (auto known : {number_format::dec, number_format::mips}) {
        if (processor == static_cast<std::int32_t>(known))
            form.format = known;
    }
    return form;
}

bool was_integer(const strata::data_group& format) {
    return schema::read_text(header_attribute(format, attribute::storage)) == "integer";
}

} // namespace c3d
