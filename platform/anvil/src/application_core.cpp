#include <anvil/application_core.hpp>

#include <atomic>
#include <utility>

#include <anvil/path_text.hpp>

namespace anvil {

namespace {

constinit std::atomic<application_core*> the_instance = nullptr;

} // namespace

application_core::application_core(int argument_count, char** arguments) {
    if (argument_count > 0 && arguments != nullptr && arguments[0] != nullptr)
        application_name_ = text_of_path(path_from_text(arguments[0]).stem());

    application_core* none = nullptr;
    the_instance.compare_exchange_strong(none, this);
}

application_core::~application_core() {
    application_core* self = this;
    the_instance.compare_exchange_strong(self, nullptr);
}

application_core* application_core::instance() noexcept { return the_instance.load(); }

void application_core::set_organization_name(std::string name) {
    organization_name_ = std::move(name);
}

void application_core::set_organization_domain(std::string domain) {
    organization_domain_ = std::move(domain);
}

void application_core::set_application_name(std::string name) {
    application_name_ = std::move(name);
}

void application_core::set_application_version(std::string version) {
    application_version_ = std::move(version);
}

} // namespace anvil
