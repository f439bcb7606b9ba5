#include "platform/strata/src/plugins/registration.hpp"

#include <utility>

#include <strata/store_error.hpp>

#include "platform/strata/src/plugins/plugin_catalog.hpp"

namespace strata::detail {

void registration::refuse(const std::string& reason) {
    // Remembered here as well: a plugin that catches the exception is refused all the same.
    if (failure_.empty())
        failure_ = reason;
    throw store_error{reason};
}

template <typename Offer>
void registration::add(const char* kind, std::string id, std::unique_ptr<Offer> offer) {
    const auto subject = std::string{"the "} + kind + " '" + id + "'";
    if (id.empty())
        refuse(std::string{"the id of the "} + kind + " that it registers is empty");
    if (!offer)
        refuse(subject + " that it registers is null");
    auto& list = offers_.of<Offer>();
    if (list.find(id) || plugin_catalog::instance().find_offer<Offer>(id))
        refuse(subject + " is registered already");
    list.add(std::move(id), std::move(offer));
}

void registration::add_importer(std::string id, std::unique_ptr<importer> offer) {
    add("importer", std::move(id), std::move(offer));
}

void registration::add_exporter(std::string id, std::unique_ptr<exporter> offer) {
    add("exporter", std::move(id), std::move(offer));
}

void registration::add_unit(std::string id, std::unique_ptr<callable_unit> offer) {
    add("callable unit", std::move(id), std::move(offer));
}

void registration::report_failure(const char* reason) noexcept {
    if (!failure_.empty())
        return;
    try {
        failure_ = std::string{"it failed to register : "} + reason;
    } catch (...) { // NOLINT(bugprone-empty-catch): without memory for the text, the plugin's
                    // answer still says that it failed
    }
}

} // namespace strata::detail
