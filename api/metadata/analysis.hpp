#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::analysis {

/// The metadata group "ANALYSIS" and {"units": its "UNITS"}. RuntimeError when there is no such
/// group.
[[nodiscard]] outputs<2> all(strata::data_store acquisition);

/// Always refused: analysis parameters can only be read.
[[nodiscard]] outputs<2> append(strata::data_store acquisition, const std::string& name,
                                const std::string& context, const std::string& subject,
                                double value);
[[nodiscard]] outputs<2> append_with_unit(strata::data_store acquisition, const std::string& name,
                                          const std::string& context, const std::string& subject,
                                          double value, const std::string& unit);
[[nodiscard]] outputs<2>
append_with_description(strata::data_store acquisition, const std::string& name,
                        const std::string& context, const std::string& subject, double value,
                        const std::string& unit, const std::string& description);
[[nodiscard]] outputs<2> remove_by_index(strata::data_store acquisition, int index);
[[nodiscard]] outputs<2> remove_by_name(strata::data_store acquisition, const std::string& name,
                                        const std::string& context);
void clear(strata::data_store acquisition);

} // namespace mox::analysis
