#include "store/python.hpp"

#include "acquisition/files/read_trial.hpp"

#include <span>
#include <utility>
#include <vector>

#include <anvil/io_file.hpp>
#include <anvil/io_memory.hpp>
#include <anvil/path_text.hpp>
#include <fmt/format.h>

#include "acquisition/files/file_argument.hpp"
#include "acquisition/files/file_form.hpp"
#include "acquisition/files/import_acquisition.hpp"
#include "acquisition/files/os_failure.hpp"
#include "acquisition/files/source_record.hpp"
#include "store/borrowed_bytes.hpp"
#include "store/interpreter_release.hpp"
#include "store/python_read.hpp"
#include "store/swig_error.hpp"

namespace mox::reading {

namespace {

asked_kinds kinds_of(PyObject* kinds) {
    if (kinds == Py_None)
        return std::nullopt;
    const auto words = py_ref::checked(PySequence_Fast(kinds, "kinds are a sequence of str"));
    std::vector<std::string> result;
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(words.get()); ++i) {
        const auto* word = PyUnicode_AsUTF8(PySequence_Fast_GET_ITEM(words.get(), i));
        if (!word)
            throw python_error{};
        result.emplace_back(word);
    }
    return result;
}

/// The import, with the lock released. What fails after the importer is a fault of the content too.
imported import_meanwhile(anvil::io_device& device, const asked_kinds& kinds,
                          const std::filesystem::path& path = {}) {
    try {
        const interpreter_release released;
        return import_acquisition(device, path, kinds);
    } catch (const swig_error& error) {
        throw swig_error(error_code::value,
                         fmt::format("'{}': {}", device.name(), error.message()));
    }
}

std::optional<strata::data_store> acquisition_of(imported result) {
    if (!result.accepted)
        return std::nullopt;
    if (result.status)
        return std::move(result.acquisition);
    const auto code = result.status.is_out_of_memory() ? error_code::memory : error_code::value;
    throw swig_error(code, result.status.message("\n\t - "));
}

} // namespace

std::optional<strata::data_store> read_file(PyObject* path, PyObject* kinds) {
    const auto name = bytes_of_path(path);
    const auto asked = kinds_of(kinds);
    const auto file_path = anvil::path_from_text(name);
    anvil::io_file file;
    imported result;
    {
        const interpreter_release released;
        file.open(file_path, anvil::io_read);
    }
    if (file.is_open())
        result = import_meanwhile(file, asked, file_path);
    // Also when reading stopped in the middle, whatever the importer made of that.
    if (file.failure())
        throw_os_failure(file.failure(), name);
    return acquisition_of(std::move(result));
}

std::optional<strata::data_store> read_bytes(PyObject* buffer, const std::string& name,
                                             PyObject* kinds) {
    const auto asked = kinds_of(kinds);
    const borrowed_bytes bytes(buffer);
    anvil::io_memory device(bytes.view(), name);
    return acquisition_of(import_meanwhile(device, asked));
}

py_ref warnings(strata::data_store acquisition) {
    const auto texts = warnings_of(acquisition.root());
    auto list = py_ref::checked(PyList_New(static_cast<Py_ssize_t>(texts.size())));
    for (std::size_t i = 0; i < texts.size(); ++i)
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), text_to_python(texts[i]).release());
    return list;
}

py_ref source(strata::data_store acquisition) {
    const auto root = acquisition.root();
    const auto path = source_path_of(root);
    const auto form = source_form(root);
    const auto name = path ? py_ref::checked(PyUnicode_DecodeFSDefaultAndSize(
                                 path->data(), static_cast<Py_ssize_t>(path->size())))
                           : py_ref::none();
    const std::string processor{processor_name(form.processor)};
    return py_ref::checked(
        Py_BuildValue("(Oss)", name.get(), form.storage.c_str(), processor.c_str()));
}

} // namespace mox::reading
