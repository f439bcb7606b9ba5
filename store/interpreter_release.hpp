#pragma once

#include "store/python.hpp"

namespace mox {

/// While it lives, other threads run Python. Nothing of Python may be touched meanwhile, nor a
/// store that another thread can reach: one that nobody has seen yet, or a copy that nobody else
/// has.
class interpreter_release {
  public:
    interpreter_release() noexcept : thread_(PyEval_SaveThread()) {}
    interpreter_release(const interpreter_release&) = delete;
    interpreter_release& operator=(const interpreter_release&) = delete;
    /// Waits for its turn.
    ~interpreter_release();

  private:
    PyThreadState* thread_;
};

} // namespace mox
