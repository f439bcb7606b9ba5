#include "store/python.hpp"

#include "tests/python/probe/places.hpp"

#include <cstdint>
#include <vector>

#include "store/typed_access.hpp"

namespace mox::probe {

strata::data_group group_at(const strata::data_store& store, const std::string& path) {
    return store.root().retrieve_group(path);
}

strata::data_set set_at(const strata::data_store& store, const std::string& path) {
    return store.root().retrieve_set(path);
}

strata::data_attribute attribute_at(const strata::data_store& store, const std::string& path,
                                    const std::string& name) {
    if (store.root().exists_set(path))
        return set_at(store, path).retrieve_attribute(name);
    return group_at(store, path).retrieve_attribute(name);
}

strata::data_selection selection_at(const strata::data_store& store, const std::string& path,
                                    PyObject* coordinates) {
    const auto set = set_at(store, path);
    if (coordinates == Py_None)
        return select_all(set);
    const auto given = integers_from(coordinates);
    const std::vector<std::uint64_t> box(given.begin(), given.end());
    return set.select(box.data(), box.size(), true);
}

strata::data_shape shape_from(PyObject* dimensions) {
    if (dimensions == Py_None)
        return strata::data_shape(false);
    return {integers_from(dimensions), false};
}

std::vector<std::int64_t> integers_from(PyObject* list) {
    const auto items = py_ref::checked(PySequence_Fast(list, "a list of integers is expected"));
    std::vector<std::int64_t> integers;
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(items.get()); ++i) {
        const long long number = PyLong_AsLongLong(PySequence_Fast_GET_ITEM(items.get(), i));
        if (number == -1 && PyErr_Occurred())
            throw python_error{};
        integers.push_back(number);
    }
    return integers;
}

} // namespace mox::probe
