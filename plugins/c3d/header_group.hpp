#pragma once

#include <strata/data_group.hpp>

#include "plugins/c3d/frames/frame_layout.hpp"
#include "plugins/c3d/parameters/c3d_file.hpp"
#include "plugins/c3d/parameters/metadata_names.hpp"

namespace c3d {

/// Creates the group `Header` of `format`: what scripts ask about the header, and what is needed to
/// write the file again.
///
/// | attribute                           | type, shape  | content                                |
/// |-------------------------------------|--------------|----------------------------------------|
/// | `NumberAnalogSamplesPerPointSample` | int32        | analog samples of a channel in a frame |
/// | `PointMaximumInterpolationGap`      | int32        | word 6                                 |
/// | `TotalAnalogSamplesPer3dSample`     | int32        | the same of all channels together      |
/// | `FirstFrame`, `LastFrame`           | int32        | words 4 and 5                          |
/// | `Processor`                         | int32        | 84 Intel, 85 DEC, 86 MIPS              |
/// | `Storage`                           | string       | "integer" or "real"                    |
/// | `PointScale`                        | float32      | magnitude of POINT:SCALE               |
/// | `SectionHead`                       | int16, {4}   | first bytes of the parameter section   |
/// | `Block`                             | uint8, {512} | the header block, as described below   |
/// | `EventTimes`                        | float32, {n} | events of the header block, in seconds |
/// | `EventLabels`                       | string, {n}  | their labels, without padding          |
/// | `EventStatuses`                     | int32, {n}   | their status bytes                     |
///
/// The counts of analog samples are those that the file was read with; the first is at least 1.
/// `Block` exists only when a reserved byte of the header is not 0.
/// The groups `Groups` and `Parameters` are those of create_kept_records.
void create_header_group(strata::data_group& format, const c3d_file& file,
                         const frame_layout& layout, const metadata_names& names);

} // namespace c3d
