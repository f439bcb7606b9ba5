#pragma once

// What describes an analog channel. Each call ends with the fresh reading of all channels.

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::analogs {

[[nodiscard]] outputs<2> set_label_by_index(strata::data_store acquisition, int index,
                                            const std::string& label);
[[nodiscard]] outputs<2> set_label_by_label(strata::data_store acquisition,
                                            const std::string& channel, const std::string& label);

[[nodiscard]] outputs<2> set_description_by_index(strata::data_store acquisition, int index,
                                                  const std::string& text);
[[nodiscard]] outputs<2> set_description_by_label(strata::data_store acquisition,
                                                  const std::string& channel,
                                                  const std::string& text);

[[nodiscard]] outputs<2> set_unit_by_index(strata::data_store acquisition, int index,
                                           const std::string& unit);
[[nodiscard]] outputs<2> set_unit_by_label(strata::data_store acquisition,
                                           const std::string& channel, const std::string& unit);

/// RuntimeError, before anything else, for a gain code that gain_value does not know.
[[nodiscard]] outputs<2> set_gain_by_index(strata::data_store acquisition, int index, int code);
[[nodiscard]] outputs<2> set_gain_by_label(strata::data_store acquisition,
                                           const std::string& channel, int code);

[[nodiscard]] outputs<2> set_offset_by_index(strata::data_store acquisition, int index, int offset);
[[nodiscard]] outputs<2> set_offset_by_label(strata::data_store acquisition,
                                             const std::string& channel, int offset);

[[nodiscard]] outputs<2> set_scale_by_index(strata::data_store acquisition, int index, float scale);
[[nodiscard]] outputs<2> set_scale_by_label(strata::data_store acquisition,
                                            const std::string& channel, float scale);

} // namespace mox::analogs
