#pragma once

#include <vector>

#include <strata/data_group.hpp>

#include "plugins/c3d/parameters/header.hpp"
#include "plugins/c3d/parameters/parameter_tree.hpp"

namespace c3d {

/// Makes the parameters of EVENT tell the events of the group `Events` of `format`, and gives those
/// that go to the header block.
///
/// Without that group nobody has looked for the events of the file, which all stay as they are.
///
/// As long as the file's own parameters and header tell the same events, all of them stay as they
/// are. Otherwise the lists are made anew: occurrences that the file had keep their order, others
/// come behind. The header keeps the events that the acquisition still has; it gets no new ones,
/// and none whose label does not fit: EVENT has it.
[[nodiscard]] std::vector<header_event> put_events(parameter_tree& tree,
                                                   const strata::data_group& format);

} // namespace c3d
