#include "schema/write_attribute.hpp"

#include <strata/store_error.hpp>

namespace schema {

void set_value(strata::data_attribute attribute, const void* elements, strata::data_type type) {
    if (attribute.shape().element_count() == 0)
        return;
    if (!attribute.write_value(elements, type)) {
        throw strata::store_error("the value of the attribute '" + attribute.name() +
                                  "' was refused");
    }
}

} // namespace schema
