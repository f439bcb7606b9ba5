#include "tests/cpp/c3d/support/reading.hpp"

#include <algorithm>
#include <memory>
#include <utility>

#include "plugins/c3d/importer.hpp"
#include "schema/read_attribute.hpp"
#include "tests/cpp/c3d/support/line_collector.hpp"

namespace c3d_test {

std::vector<double> reading::values(std::string_view set) const {
    auto source = store.root().retrieve_set(set);
    const auto extent = source.shape(false);
    std::vector<double> result(static_cast<std::size_t>(extent.element_count()));
    const auto selection = source.select(extent, false);
    if (!result.empty() && !selection.read_value(result.data(), strata::data_type::float64)) {
        result.clear();
    }
    return result;
}

std::vector<double> reading::row(std::string_view set, std::size_t component,
                                 std::size_t channel) const {
    const auto extents = shape(set);
    const auto all = values(set);
    const auto samples = static_cast<std::size_t>(extents.at(2));
    const auto first = (component * static_cast<std::size_t>(extents.at(1)) + channel) * samples;
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(samples)};
}

std::vector<std::int64_t> reading::shape(std::string_view set) const {
    const auto extent = store.root().retrieve_set(set).shape(false);
    return extent.dimensions();
}

strata::data_attribute reading::attribute(std::string_view owner, std::string_view name) const {
    const auto root = store.root();
    if (root.exists_set(owner))
        return root.retrieve_set(owner).retrieve_attribute(name);
    return root.retrieve_group(owner).retrieve_attribute(name);
}

std::vector<std::string> reading::texts(std::string_view owner, std::string_view name) const {
    return schema::read_texts(attribute(owner, name));
}

std::vector<double> reading::numbers(std::string_view owner, std::string_view name) const {
    return schema::read_numbers<double>(attribute(owner, name));
}

bool reading::warns_about(std::string_view part) const {
    return std::any_of(warnings.begin(), warnings.end(),
                       [&](const auto& line) { return line.find(part) != std::string::npos; });
}

reading read(memory_device& device) {
    auto sink = std::make_shared<line_collector>();
    anvil::install_default_log_sink(sink);
    reading result;
    result.status = c3d::importer().read(device, result.store.root());
    anvil::install_default_log_sink(nullptr);
    result.warnings = std::move(sink->lines);
    return result;
}

reading read(byte_vector bytes) {
    memory_device device(std::move(bytes));
    return read(device);
}

} // namespace c3d_test
