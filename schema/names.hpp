#pragma once

// Where everything of an acquisition lies in the store. Paths start at the root group.

namespace schema {

inline constexpr char format[] = "Format";
inline constexpr char data[] = "Format/Data";
inline constexpr char header[] = "Format/Header";
inline constexpr char events[] = "Format/Events";
inline constexpr char metadata[] = "Format/Metadata";
inline constexpr char metadata_point[] = "Format/Metadata/POINT";
inline constexpr char metadata_analog[] = "Format/Metadata/ANALOG";

inline constexpr char points[] = "Format/Data/Points";   ///< raw set of a file's points
inline constexpr char analogs[] = "Format/Data/Analogs"; ///< raw set of a file's analog channels
inline constexpr char analogs_export[] =
    "Format/Data/AnalogsExport"; ///< device group of the analog channels
inline constexpr char rotations[] = "Format/Data/Rotations"; ///< raw set of a file's rotations
// A group a kind of points.
inline constexpr char angles[] = "Format/Data/Angles";
inline constexpr char forces[] = "Format/Data/Forces";
inline constexpr char markers[] = "Format/Data/Markers";
inline constexpr char moments[] = "Format/Data/Moments";
inline constexpr char powers[] = "Format/Data/Powers";
inline constexpr char skeleton[] = "Format/Data/Skeleton";
inline constexpr char segments[] = "Format/Data/Skeleton/Segments"; ///< a group a segment
inline constexpr char force_plates[] = "Devices/ForcePlate";        ///< a group FP<i> a platform

/// Names below `data`, where nothing else is said.
namespace name {
inline constexpr char points[] = "Points";
inline constexpr char analogs[] = "Analogs";
inline constexpr char analogs_export[] = "AnalogsExport";
inline constexpr char angles[] = "Angles";
inline constexpr char forces[] = "Forces";
inline constexpr char markers[] = "Markers";
inline constexpr char moments[] = "Moments";
inline constexpr char powers[] = "Powers";
inline constexpr char metadata[] = "Metadata";       ///< below `format`
inline constexpr char segment_rotations[] = "T_SCS"; ///< set of a segment's group
inline constexpr char wrench_at_origin[] = "W_HO";   ///< sets of a platform's group
inline constexpr char wrench_at_point[] = "W_POA";
} // namespace name

/// Attributes of groups, sets and the header.
namespace attribute {
inline constexpr char device_type[] = "DeviceType";
inline constexpr char num_samples[] = "NumSamples";              ///< int64
inline constexpr char sample_rate[] = "SampleRate";              ///< float64, Hz
inline constexpr char start_time[] = "StartTime";                ///< float64, seconds
inline constexpr char relative_set_index[] = "RelativeSetIndex"; ///< int32
inline constexpr char devices_index[] = "DevicesIndex";          ///< int32, of a platform
inline constexpr char description[] = "Description";
inline constexpr char label[] = "Label";
inline constexpr char unit[] = "Unit";
inline constexpr char units[] = "Units";
inline constexpr char metric_type[] = "MetricType";
inline constexpr char gain[] = "Gain";     ///< int32, a code
inline constexpr char offset[] = "Offset"; ///< float32
inline constexpr char scale[] = "Scale";   ///< float32
inline constexpr char residuals[] =
    "Residuals"; ///< float32 a sample: the fourth word of the file's point records
inline constexpr char point_scale[] = "PointScale";  ///< float64, of the header: units a step of
                                                     ///< integer coordinates and of residuals
inline constexpr char reliability[] = "Reliability"; ///< float32 a sample of rotations
inline constexpr char labels[] = "Labels";
inline constexpr char types[] = "Types";
inline constexpr char analog_samples_per_frame[] = "NumberAnalogSamplesPerPointSample"; ///< int32
inline constexpr char interpolation_gap[] = "PointMaximumInterpolationGap";             ///< int32
inline constexpr char analog_values_per_frame[] = "TotalAnalogSamplesPer3dSample";      ///< int32
inline constexpr char event_context[] = "Context";
inline constexpr char event_icons[] = "Icons"; ///< int32, shape {1}: the event's id
inline constexpr char event_subject[] = "Subject";
inline constexpr char event_description[] = "Description";
inline constexpr char event_type[] = "Type";
// One element for each time of an event's set, where occurrences differ from what the set says.
inline constexpr char occurrence_contexts[] = "OccurrenceContexts";
inline constexpr char occurrence_labels[] = "OccurrenceLabels";
inline constexpr char occurrence_subjects[] = "OccurrenceSubjects";
inline constexpr char occurrence_descriptions[] = "OccurrenceDescriptions";
inline constexpr char occurrence_icons[] = "OccurrenceIcons"; ///< int32
inline constexpr char occurrence_flags[] = "OccurrenceFlags"; ///< int32
inline constexpr char bits[] = "BITS";                        ///< analog resolution
inline constexpr char rate[] = "RATE"; ///< Hz, in the POINT and ANALOG parameter groups
inline constexpr char descriptions[] = "DESCRIPTIONS";
} // namespace attribute

/// Values of `DeviceType`.
namespace device {
inline constexpr char mocap[] = "Mocap";
inline constexpr char emg[] = "EMG";
inline constexpr char adc[] = "ADC";
inline constexpr char event_to_export[] = "EventToExport";
inline constexpr char metadata[] = "Metadata";
} // namespace device

inline constexpr int default_analog_resolution =
    12; // bits, where a file or a new acquisition says nothing else

} // namespace schema
