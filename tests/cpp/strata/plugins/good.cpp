#include <array>
#include <cstring>
#include <memory>
#include <span>
#include <stdexcept>

#include <strata/plugin/plugin.hpp>

namespace {

/// A type that only this file knows, so that whoever catches it needs the file.
class own_failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Accepts what starts with four letters of its own.
class letters_importer : public strata::importer {
  public:
    explicit letters_importer(const char* letters) : letters_(letters) {}
    [[nodiscard]] bool accepts(anvil::io_device& device) const override {
        std::array<char, 4> start{};
        const auto result = device.read_at(0, std::as_writable_bytes(std::span{start}));
        return result.bytes == start.size() &&
               std::memcmp(start.data(), letters_, start.size()) == 0;
    }
    [[nodiscard]] anvil::status read(anvil::io_device&, strata::data_group target) const override {
        target.create_group(letters_);
        return {};
    }

  private:
    const char* letters_;
};

class throwing_importer final : public letters_importer {
  public:
    using letters_importer::letters_importer;
    [[nodiscard]] anvil::status read(anvil::io_device&, strata::data_group) const override {
        throw own_failure{"byte 4: nothing is right"};
    }
};

class memory_importer final : public letters_importer {
  public:
    using letters_importer::letters_importer;
    [[nodiscard]] anvil::status read(anvil::io_device&, strata::data_group) const override {
        throw std::bad_alloc{};
    }
};

class confused_importer final : public strata::importer {
  public:
    [[nodiscard]] bool accepts(anvil::io_device&) const override {
        throw own_failure{"what is this"};
    }
    [[nodiscard]] anvil::status read(anvil::io_device&, strata::data_group) const override {
        return {};
    }
};

class exporter final : public strata::exporter {
  public:
    [[nodiscard]] anvil::status write(anvil::io_device& device,
                                      strata::data_group source) const override {
        const auto names = source.list_group_children_name();
        if (names.empty())
            return anvil::status::failure("there is nothing to write");
        const auto result = device.write(std::as_bytes(std::span{names.front()}));
        return result.error ? anvil::status::failure(result.error.message()) : anvil::status{};
    }
};

class unit final : public strata::callable_unit {
  public:
    [[nodiscard]] anvil::status evaluate(strata::data_group& target,
                                         const anvil::json& parameters) const override {
        target.create_group(parameters.at("Group").get<std::string>());
        return {};
    }
};

} // namespace

STRATA_PLUGIN(registry) {
    registry.add_importer("test.confused", std::make_unique<confused_importer>());
    registry.add_importer("test.aaaa", std::make_unique<letters_importer>("AAAA"));
    registry.add_importer("test.bbbb", std::make_unique<letters_importer>("BBBB"));
    registry.add_importer("test.throws", std::make_unique<throwing_importer>("THRO"));
    registry.add_importer("test.memory", std::make_unique<memory_importer>("MEMO"));
    registry.add_exporter("test.exporter", std::make_unique<exporter>());
    registry.add_unit("test.unit", std::make_unique<unit>());
}
