#pragma once

#include <string>

#include "platform/strata/src/plugins/offers.hpp"

namespace strata::detail {

/// Takes a plugin's offers while it registers. They take effect only when registering succeeded as
/// a whole.
class registration final : public plugin_registry {
  public:
    // Each throws store_error for an id that is taken or empty and for an offer that is null.
    void add_importer(std::string id, std::unique_ptr<importer> offer) override;
    void add_exporter(std::string id, std::unique_ptr<exporter> offer) override;
    void add_unit(std::string id, std::unique_ptr<callable_unit> offer) override;

    void report_failure(const char* reason) noexcept override;

    /// Why registering failed, the first reason; empty unless it did.
    [[nodiscard]] const std::string& failure() const noexcept { return failure_; }

    [[nodiscard]] offers take() noexcept { return std::move(offers_); }

  private:
    template <typename Offer>
    void add(const char* kind, std::string id, std::unique_ptr<Offer> offer);
    [[noreturn]] void refuse(const std::string& reason);

    offers offers_;
    std::string failure_;
};

} // namespace strata::detail
