#include "plugins/opensim/import_trial.hpp"

#include <cstddef>
#include <exception>
#include <new>
#include <string_view>

#include <fmt/format.h>

#include "schema/names.hpp"
#include "schema/write_attribute.hpp"

namespace opensim {

namespace {

/// A header's end is looked for that far.
constexpr std::size_t start_bytes = 4096;

void import(anvil::io_device& device, strata::data_group& target, trial_reader read,
            schema::warnings& notes) {
    line_reader lines(device);
    create_tree(target, read(lines, notes));
    if (const auto texts = notes.lines(); !texts.empty())
        schema::write_texts(target, schema::attribute::warnings, texts);
}

} // namespace

anvil::status import_trial(anvil::io_device& device, strata::data_group target, trial_reader read) {
    const auto name = device.name();
    const auto located = [&](std::string_view text) { return fmt::format("'{}': {}", name, text); };
    schema::warnings notes;
    try {
        import(device, target, read, notes);
        notes.log(name);
        return {};
    } catch (const std::bad_alloc&) {
        return anvil::status::out_of_memory(located(
            fmt::format("not enough memory for the samples of a file of {} bytes", device.size())));
    } catch (const std::exception& error) {
        notes.log(name);
        return anvil::status::failure(located(error.what()));
    }
}

std::string start_of(anvil::io_device& device) {
    std::string start(start_bytes, '\0');
    const auto result = device.read_at(0, std::as_writable_bytes(std::span(start)));
    start.resize(result.bytes);
    return start;
}

} // namespace opensim
