#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <strata/plugin/plugin.hpp>

namespace strata::detail {

/// Importers, exporters or units under their ids, in order of registration.
template <typename Offer> class offer_list {
  public:
    struct row {
        std::string id;
        std::unique_ptr<Offer> offer;
    };

    [[nodiscard]] Offer* find(std::string_view id) const noexcept {
        const auto found = std::ranges::find(rows_, id, &row::id);
        return found == rows_.end() ? nullptr : found->offer.get();
    }
    void add(std::string id, std::unique_ptr<Offer> offer) {
        rows_.push_back({std::move(id), std::move(offer)});
    }
    [[nodiscard]] const std::vector<row>& rows() const noexcept { return rows_; }

  private:
    std::vector<row> rows_;
};

/// All that one plugin offers.
struct offers {
    offer_list<importer> importers;
    offer_list<exporter> exporters;
    offer_list<callable_unit> units;

    /// The list for one kind of offer.
    template <typename Offer> [[nodiscard]] auto& of() noexcept { return list_of<Offer>(*this); }
    template <typename Offer> [[nodiscard]] const auto& of() const noexcept {
        return list_of<Offer>(*this);
    }

  private:
    template <typename Offer, typename Self> static auto& list_of(Self& self) noexcept {
        if constexpr (std::is_same_v<Offer, importer>) {
            return self.importers;
        } else if constexpr (std::is_same_v<Offer, exporter>) {
            return self.exporters;
        } else {
            return self.units;
        }
    }
};

} // namespace strata::detail
