#pragma once

#include "store/python.hpp"

#include <array>
#include <cstddef>

namespace mox {

/// What a function with `Count` results leaves for Python, which receives them as a list; an empty
/// one becomes None.
template <std::size_t Count> struct outputs {
    std::array<py_ref, Count> values;

    template <typename... Results>
        requires(sizeof...(Results) <= Count)
    outputs(Results... results) : values{std::move(results)...} {}
};

} // namespace mox
