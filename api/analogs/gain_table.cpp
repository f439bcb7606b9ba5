#include "api/analogs/gain_table.hpp"

#include <array>
#include <stdexcept>

namespace mox {

double gain_value(int code) {
    static constexpr std::array<double, last_gain_code + 1> values{0.0,    10000.0, 5000.0,
                                                                   2500.0, 1250.0,  1000.0};
    if (code < 0 || code > last_gain_code)
        // Kept: scripts compare this text.
        throw std::out_of_range("invalid map<K, T> key");
    return values[static_cast<std::size_t>(code)];
}

} // namespace mox
