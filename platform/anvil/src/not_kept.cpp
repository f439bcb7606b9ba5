#include "platform/anvil/src/not_kept.hpp"

#include <string>

namespace anvil {

namespace {

// A code is one number: the part above, the cause below.
constexpr int causes = 1 << 16;

const char* name_of(kept_part part) noexcept {
    switch (part) {
    case kept_part::owner:
        return "owner";
    case kept_part::group:
        return "group";
    case kept_part::permissions:
        return "permissions";
    case kept_part::access_list:
        return "access list";
    case kept_part::attribute:
        return "extended attributes";
    }
    return "rights";
}

class not_kept_category final : public std::error_category {
  public:
    [[nodiscard]] const char* name() const noexcept override { return "anvil.not_kept"; }

    [[nodiscard]] std::string message(int code) const override {
        return std::string("the ") + name_of(kept_part{code / causes}) +
               " of the old file cannot be kept: " + std::system_category().message(code % causes);
    }

    [[nodiscard]] std::error_condition default_error_condition(int code) const noexcept override {
        return std::system_category().default_error_condition(code % causes);
    }
};

const not_kept_category& category() noexcept {
    static const not_kept_category the_category;
    return the_category;
}

} // namespace

std::error_code not_kept(kept_part part, int cause) noexcept {
    return {static_cast<int>(part) * causes + cause, category()};
}

std::error_code cause_of(std::error_code failure) noexcept {
    if (failure.category() != category())
        return failure;
    return {failure.value() % causes, std::system_category()};
}

} // namespace anvil
