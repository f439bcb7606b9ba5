#pragma once

namespace mox {

/// Picks the function of signature `Signature` out of an overloaded name.
template <typename Signature> consteval Signature* overload(Signature* function) {
    return function;
}

} // namespace mox
