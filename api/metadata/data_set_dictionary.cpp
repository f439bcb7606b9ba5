#include "store/python.hpp"

#include "api/metadata/data_set_dictionary.hpp"

#include <string_view>

#include "store/dictionary.hpp"
#include "store/python_read.hpp"

namespace mox::metadata {

py_ref data_set_dictionary(const strata::data_set set) {
    constexpr array_form transposed{.transpose = true, .squeeze = false};
    auto dictionary = py_ref::checked(PyDict_New());
    for (const auto& name : set.list_attributes_name()) {
        set_item(dictionary.get(), std::string_view(name),
                 read_as_python(set.retrieve_attribute(name), transposed));
    }
    set_item(dictionary.get(), "Values", read_as_python(set, transposed));
    return dictionary;
}

} // namespace mox::metadata
