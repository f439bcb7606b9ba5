#pragma once

#include "store/python.hpp"

#include <optional>
#include <string>

#include <strata/data_store.hpp>

namespace mox::reading {

/// A new acquisition with the content of the file at `path`, a str, bytes or an os.PathLike; of its
/// channels with those of `kinds`, a sequence of str, alone unless that is None. Nothing when there
/// is no importer for such content. OSError when the system does not let it be read, ValueError
/// when it holds no complete acquisition. Other threads run Python meanwhile.
[[nodiscard]] std::optional<strata::data_store> read_file(PyObject* path, PyObject* kinds);

/// The same with the content of `buffer`, an object that lends its bytes. `name` stands for it in
/// texts.
[[nodiscard]] std::optional<strata::data_store>
read_bytes(PyObject* buffer, const std::string& name, PyObject* kinds);

/// What was odd when the acquisition was read, a list of texts.
[[nodiscard]] py_ref warnings(strata::data_store acquisition);

/// A tuple: the absolute path of the file that was read, or None; "real" or "integer"; "intel",
/// "dec" or "mips".
[[nodiscard]] py_ref source(strata::data_store acquisition);

} // namespace mox::reading
