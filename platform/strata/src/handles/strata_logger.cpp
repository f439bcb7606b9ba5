#include <strata/strata_logger.hpp>

std::shared_ptr<anvil::log_stream> get_strata_logger() {
    // Never destroyed: objects that live until the process ends may still log.
    static const auto& logger =
        *new std::shared_ptr<anvil::log_stream>{anvil::make_default_logger("strata")};
    return logger;
}
