#include "acquisition/time_base/rate_parameter.hpp"

#include <cmath>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

strata::data_attribute rate_parameter(const strata::data_group& root, const char* path) {
    if (!root.exists_group(path))
        return {};
    return root.retrieve_group(path).retrieve_attribute(schema::parameter::rate);
}

bool is_single(const strata::data_attribute& parameter) {
    return parameter.shape().element_count() == 1;
}

bool is_real(const strata::data_attribute& parameter) {
    const auto kind = strata::element_kind(parameter.type());
    return kind == strata::data_type::float32 || kind == strata::data_type::float64;
}

/// Writes `rate` in the parameter's own type; false when it then tells another.
bool takes_rate(const strata::data_attribute& parameter, double rate) {
    if (!schema::holds_numbers(parameter) || !is_single(parameter))
        return false;
    write(parameter, rate);
    return is_real(parameter) || read<double>(parameter) == rate;
}

} // namespace

std::optional<double> rate_told(const strata::data_group& root, const char* path) {
    const auto parameter = rate_parameter(root, path);
    if (!parameter || !is_single(parameter))
        return std::nullopt;
    const auto rate = read<double>(parameter);
    return std::isfinite(rate) && rate > 0.0 ? std::optional(rate) : std::nullopt;
}

void tell_rate(const strata::data_group& root, const char* path, double rate) {
    const auto parameter = rate_parameter(root, path);
    if (!parameter || takes_rate(parameter, rate))
        return;
    const auto shape = is_single(parameter) ? parameter.shape() : strata::data_shape(false);
    auto group = root.retrieve_group(path);
    group.delete_attribute(schema::parameter::rate);
    write(group.create_attribute(schema::parameter::rate, shape, strata::data_type::float32), rate);
}

} // namespace mox
