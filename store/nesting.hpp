#pragma once

#include "store/python.hpp"

namespace mox {

/// One level of nested containers, while it lives. Throws python_error, a RecursionError that names
/// the `activity`, when there are too many: Python's own limit is for the main thread's stack,
/// which other threads may not have.
class nesting {
  public:
    explicit nesting(const char* activity) {
        if (depth == deepest) {
            PyErr_Format(PyExc_RecursionError, "maximum recursion depth exceeded while %s",
                         activity);
            throw python_error{};
        }
        ++depth;
    }
    nesting(const nesting&) = delete;
    nesting& operator=(const nesting&) = delete;
    ~nesting() { --depth; }

  private:
    static constexpr int deepest = 200;
    inline static int depth = 0; // the interpreter lock guards it
};

} // namespace mox
