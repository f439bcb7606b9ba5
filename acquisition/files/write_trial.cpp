#include "store/python.hpp"

#include "acquisition/files/write_trial.hpp"

#include <anvil/io_file.hpp>
#include <anvil/io_memory.hpp>
#include <anvil/path_text.hpp>
#include <fmt/format.h>
#include <strata/access/copy_store.hpp>

#include "acquisition/files/export_acquisition.hpp"
#include "acquisition/files/file_argument.hpp"
#include "acquisition/files/file_form.hpp"
#include "acquisition/files/os_failure.hpp"
#include "store/interpreter_release.hpp"
#include "store/swig_error.hpp"

namespace mox::writing {

namespace {

/// What is to be written, which nobody else can reach.
strata::data_store snapshot_of(const strata::data_store& acquisition, const std::string& storage,
                               const std::string& processor) {
    const auto root = acquisition.root();
    const auto form = wanted_form_of(root, storage, processor);
    try {
        prepare_export(acquisition);
    } catch (const swig_error& error) {
        const bool is_content = error.code() == error_code::runtime;
        throw swig_error(is_content ? error_code::value : error.code(), error.message());
    }
    auto snapshot = strata::copy_store(acquisition);
    ask_for_form(snapshot.root(), form);
    mark_metadata(root);
    return snapshot;
}

void require_success(const anvil::status& status) {
    if (status)
        return;
    throw swig_error(status.is_out_of_memory() ? error_code::memory : error_code::value,
                     "the trial cannot be written: " + status.message("\n\t - "));
}

} // namespace

void write_file(strata::data_store acquisition, PyObject* path, const std::string& storage,
                const std::string& processor) {
    const auto name = bytes_of_path(path);
    const auto file_path = anvil::path_from_text(name);
    if (!has_c3d_extension(file_path)) {
        throw swig_error(error_code::value,
                         fmt::format("'{}': the name of a C3D file ends in .c3d", name));
    }
    auto snapshot = snapshot_of(acquisition, storage, processor);
    anvil::io_file file;
    anvil::status status;
    {
        const interpreter_release released;
        file.open(absolute_path(file_path), anvil::io_write);
        if (file.is_open())
            status = export_to(file, snapshot.root());
        snapshot = {};
    }
    if (file.failure())
        throw_os_failure(file.failure(), name);
    require_success(status);
}

py_ref write_bytes(strata::data_store acquisition, const std::string& storage,
                   const std::string& processor) {
    auto snapshot = snapshot_of(acquisition, storage, processor);
    anvil::io_memory device({}, "<bytes>");
    anvil::status status;
    {
        const interpreter_release released;
        status = export_to(device, snapshot.root());
        snapshot = {};
    }
    if (device.failure()) // which memory has for one reason only
        throw std::bad_alloc();
    require_success(status);
    const auto& bytes = device.written();
    return py_ref::checked(PyBytes_FromStringAndSize(reinterpret_cast<const char*>(bytes.data()),
                                                     static_cast<Py_ssize_t>(bytes.size())));
}

} // namespace mox::writing
