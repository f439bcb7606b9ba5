// Reads files that start with "PARTIAL": the line "points" has the type of each point, the line
// "analogs" the label of each analog channel; without a line there is no set. Processes rotations,
// of which there are none, and offers nothing else that reading needs.

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <strata/plugin/plugin.hpp>

namespace {

std::string content_of(anvil::io_device& device) {
    std::array<std::byte, 1024> buffer{};
    const auto result = device.read_at(0, buffer);
    return {reinterpret_cast<const char*>(buffer.data()), result.bytes};
}

void write_texts(strata::data_set set, const char* name, const std::vector<std::string>& texts) {
    std::vector<const char*> pointers;
    for (const auto& text : texts)
        pointers.push_back(text.c_str());
    const strata::data_shape shape({static_cast<std::int64_t>(texts.size())}, false);
    auto attribute = set.create_attribute(name, shape, strata::data_type::string);
    (void)attribute.write_value(static_cast<const void*>(pointers.data()),
                                strata::data_type::string);
}

strata::data_set make_set(strata::data_group data, const char* name, std::int64_t components,
                          std::size_t channels) {
    const auto width = static_cast<std::int64_t>(channels);
    return data.create_set(name, strata::data_shape({components, width, 1}, false),
                           strata::data_type::float64);
}

class partial_importer final : public strata::importer {
  public:
    [[nodiscard]] bool accepts(anvil::io_device& device) const override {
        return content_of(device).starts_with("PARTIAL");
    }

    [[nodiscard]] anvil::status read(anvil::io_device& device,
                                     strata::data_group target) const override {
        auto data = target.create_group("Format/Data");
        std::istringstream lines{content_of(device)};
        for (std::string line; std::getline(lines, line);) {
            std::istringstream text{line};
            std::string kind;
            text >> kind;
            const std::vector<std::string> words{std::istream_iterator<std::string>{text}, {}};
            if (kind == "points") {
                auto set = make_set(data, "Points", 3, words.size());
                write_texts(set, "Labels", std::vector<std::string>(words.size(), "P"));
                write_texts(set, "Types", words);
            } else if (kind == "analogs") {
                auto set = make_set(data, "Analogs", 1, words.size());
                write_texts(set, "Labels", words);
            }
        }
        return {};
    }
};

class no_rotations final : public strata::callable_unit {
  public:
    [[nodiscard]] anvil::status evaluate(strata::data_group& /*target*/,
                                         const anvil::json& /*parameters*/) const override {
        return {};
    }
};

} // namespace

STRATA_PLUGIN(registry) {
    registry.add_importer("test.partial", std::make_unique<partial_importer>());
    registry.add_unit("org.c3d.detect-rotations", std::make_unique<no_rotations>());
}
