// Notes in the log that it registers, and reads files that start with "PROBE": each further line is
// a problem that it reports.

#include <array>
#include <cstddef>
#include <memory>
#include <sstream>
#include <string>

#include <anvil/logging.hpp>
#include <strata/plugin/plugin.hpp>
#include <strata/strata_logger.hpp>

namespace {

std::string content_of(anvil::io_device& device) {
    std::array<std::byte, 1024> buffer{};
    const auto result = device.read_at(0, buffer);
    return {reinterpret_cast<const char*>(buffer.data()), result.bytes};
}

class probe_importer final : public strata::importer {
  public:
    [[nodiscard]] bool accepts(anvil::io_device& device) const override {
        return content_of(device).starts_with("PROBE");
    }

    [[nodiscard]] anvil::status read(anvil::io_device& device,
                                     strata::data_group /*target*/) const override {
        std::istringstream lines{content_of(device)};
        std::string line;
        std::getline(lines, line);
        anvil::status status;
        while (std::getline(lines, line))
            status.add(anvil::status::failure(line));
        return status;
    }
};

} // namespace

STRATA_PLUGIN(registry) {
    anvil::log_line(*get_strata_logger(), anvil::log_level::info, "The noting plugin registers");
    registry.add_importer("test.probe", std::make_unique<probe_importer>());
}
