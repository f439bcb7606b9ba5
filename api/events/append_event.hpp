#pragma once

// New occurrences of events. Each call ends with the fresh reading of all events.

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::events {

/// Adds an occurrence at `time` seconds to the event of this context and label, which is created
/// when there is none. An event that exists keeps its attributes. RuntimeError for a time that is
/// no number in single precision and for a name that cannot be one.
[[nodiscard]] outputs<2> append(strata::data_store acquisition, const std::string& label,
                                const double& time, const std::string& context);
[[nodiscard]] outputs<2> append_with_subject(strata::data_store acquisition,
                                             const std::string& label, const double& time,
                                             const std::string& context,
                                             const std::string& subject);
[[nodiscard]] outputs<2> append_with_description(strata::data_store acquisition,
                                                 const std::string& label, const double& time,
                                                 const std::string& context,
                                                 const std::string& subject,
                                                 const std::string& description);
[[nodiscard]] outputs<2> append_with_id(strata::data_store acquisition, const std::string& label,
                                        const double& time, const std::string& context,
                                        const std::string& subject, const std::string& description,
                                        int id);

} // namespace mox::events
