// Files: paths, reading, writing.
//
// | file               |                                                      |
// |--------------------|------------------------------------------------------|
// | file_argument      | the path that a script gives; a failure of a file    |
// | canonical_path     | the file that a path denotes                         |
// | read_acquisition   | a file becomes an acquisition                        |
// | import_acquisition | a device through the importers, then shaped          |
// | read_trial         | what the object view reads: paths and bytes          |
// | source_record      | what the store keeps of the file that was read       |
// | file_form          | storage and processor, as scripts name them          |
// | os_failure         | why the system refused                               |
// | open_failure       | the same for the log, where a text is laid down      |
// | post_import        | what an importer left becomes what functions rely on |
// | write_acquisition  | an acquisition becomes a file                        |
// | export_acquisition | an acquisition through the exporter                  |
// | unread_parts       | what one cannot do of which a part was read          |
// | write_trial        | what the object view writes, in any form             |
// | trial_image        | a whole store as bytes and back                      |

#pragma once

#include "store/python.hpp"

#include <strata/data_store.hpp>

namespace mox::reading {

/// A new acquisition with the content of the file that `path`, a str, names. The importer is chosen
/// by the file's content. TypeError when `path` is not a str; RuntimeError when there is no such
/// file, it cannot be opened or read, or the importer fails; the log says why it was not opened.
/// Other threads run Python meanwhile.
[[nodiscard]] strata::data_store read_acquisition(PyObject* path);

} // namespace mox::reading
