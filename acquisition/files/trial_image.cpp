#include "store/python.hpp"

#include "acquisition/files/trial_image.hpp"

#include <cstddef>
#include <span>

#include <strata/access/copy_store.hpp>
#include <strata/access/store_image.hpp>
#include <strata/store_error.hpp>

#include "store/borrowed_bytes.hpp"
#include "store/interpreter_release.hpp"
#include "store/swig_error.hpp"

namespace mox::images {

py_ref dump(strata::data_store acquisition) {
    auto snapshot = strata::copy_store(acquisition);
    auto bytes = py_ref::checked(
        PyBytes_FromStringAndSize(nullptr, static_cast<Py_ssize_t>(strata::image_size(snapshot))));
    const std::span image{reinterpret_cast<std::byte*>(PyBytes_AS_STRING(bytes.get())),
                          static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.get()))};
    const interpreter_release released;
    strata::write_image(snapshot, image);
    snapshot = {};
    return bytes;
}

strata::data_store load(PyObject* buffer) {
    const borrowed_bytes bytes(buffer);
    const interpreter_release released;
    try {
        return strata::read_image(bytes.view());
    } catch (const strata::store_error& error) {
        throw swig_error(error_code::value, error.what());
    }
}

} // namespace mox::images
