#include "store/python.hpp"

#include "api/metadata/analysis.hpp"

#include "api/metadata/metadata_path.hpp"
#include "api/metadata/read_metadata.hpp"
#include "api/unavailable.hpp"
#include "schema/names.hpp"
#include "store/dictionary.hpp"
#include "store/path_helpers.hpp"
#include "store/python_read.hpp"

namespace mox::analysis {

outputs<2> all(strata::data_store acquisition) {
    const auto path = metadata::path_of(schema::name::analysis, {});
    if (!metadata::metadata_root(acquisition).exists_group(schema::name::analysis))
        throw_no_such_group(path.group);
    const auto group = metadata::existing_group(acquisition, path);
    const auto entry = group.retrieve_attribute(schema::parameter::units);
    auto units = py_ref::checked(PyDict_New());
    set_item(units.get(), "units",
             entry ? read_as_python(entry, array_form{.transpose = true, .squeeze = false})
                   : py_ref::checked(PyList_New(0)));
    return {metadata::group_dictionary(group), std::move(units)};
}

outputs<2> append(strata::data_store /*acquisition*/, const std::string& /*name*/,
                  const std::string& /*context*/, const std::string& /*subject*/,
                  double /*value*/) {
    throw_not_supported();
}

outputs<2> append_with_unit(strata::data_store /*acquisition*/, const std::string& /*name*/,
                            const std::string& /*context*/, const std::string& /*subject*/,
                            double /*value*/, const std::string& /*unit*/) {
    throw_not_supported();
}

outputs<2> append_with_description(strata::data_store /*acquisition*/, const std::string& /*name*/,
                                   const std::string& /*context*/, const std::string& /*subject*/,
                                   double /*value*/, const std::string& /*unit*/,
                                   const std::string& /*description*/) {
    throw_not_supported();
}

outputs<2> remove_by_index(strata::data_store /*acquisition*/, int /*index*/) {
    throw_not_supported();
}

outputs<2> remove_by_name(strata::data_store /*acquisition*/, const std::string& /*name*/,
                          const std::string& /*context*/) {
    throw_not_supported();
}

void clear(strata::data_store /*acquisition*/) { throw_not_supported(); }

} // namespace mox::analysis
