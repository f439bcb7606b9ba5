#pragma once

#include "store/python.hpp"

#include <cstddef>
#include <span>

namespace mox {

/// The bytes that a Python object lends, for as long as it lives. The object cannot be resized
/// meanwhile, though its owner may change what is in it. TypeError for what lends none, BufferError
/// where they do not lie in one piece.
class borrowed_bytes {
  public:
    explicit borrowed_bytes(PyObject* object) {
        if (PyObject_GetBuffer(object, &buffer_, PyBUF_SIMPLE) < 0)
            throw python_error{};
    }
    borrowed_bytes(const borrowed_bytes&) = delete;
    borrowed_bytes& operator=(const borrowed_bytes&) = delete;
    ~borrowed_bytes() { PyBuffer_Release(&buffer_); }

    [[nodiscard]] std::span<const std::byte> view() const noexcept {
        return {static_cast<const std::byte*>(buffer_.buf), static_cast<std::size_t>(buffer_.len)};
    }

  private:
    Py_buffer buffer_{};
};

} // namespace mox
