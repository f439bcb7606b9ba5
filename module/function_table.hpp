// The extension module: start-up and the calling convention.
//
// | file             |                                             |
// |------------------|---------------------------------------------|
// | module           | start-up                                    |
// | application      | the one application of the process          |
// | log_at_exit      | a log that is complete in the end           |
// | plugin_folder    | where the plugins are                       |
// | numpy_binding    | NumPy's functions                           |
// | function_table   | a row for each function                     |
// | trial_table      | the functions of the object view            |
// | function_row     | what a row is made of                       |
// | overload         | one function of several of a name           |
// | call_frame       | arguments, call, result, failure            |
// | parameter        | what an argument may be, and its conversion |
// | result           | what a result becomes                       |
// | call_failure     | which exception a failure becomes           |
// | handle_proxy     | objects of Python that hold one of C++      |
// | wrapped          | which types these can be                    |
// | shadow_class     | handles as instances of the face's class    |
// | handle_functions | functions on handles, for other modules     |

#pragma once

#include "store/python.hpp"

namespace mox {

/// Every Python function of the module in the order of registration, ended by an empty row.
[[nodiscard]] PyMethodDef* function_table();

} // namespace mox
