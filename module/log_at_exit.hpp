#pragma once

namespace mox {

/// Sees to it that the log is complete when the interpreter ends, and when a process that
/// `multiprocessing` started does, which never comes to the end of the interpreter. Throws
/// python_error. Does nothing but the first time.
void complete_log_at_exit();

} // namespace mox
