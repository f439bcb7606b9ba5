// What module and plugins share about the data store of an acquisition.
//
// | file                 |                                                       |
// |----------------------|-------------------------------------------------------|
// | names                | where everything lies, and what it is called          |
// | computations         | what callable units are called, and told              |
// | point_kind_table     | the five kinds of points                              |
// | read_attribute       | attributes, where what is missing counts as none      |
// | write_attribute      | attributes that are created                           |
// | unit_parameters      | what callable units are asked for                     |
// | channel_names        | names of channels' sets                               |
// | name_pool            | names of which no two are equal                       |
// | event_types          | what types of events are called                       |
// | event_sets           | how the occurrences of an event lie in its set        |
// | split_record         | which channels of a file became sets                  |
// | partial_reading      | which channels of a file were not asked for           |
// | parameter_list       | texts of the parameters, over all parts of a list     |
// | analog_pairing       | the set that a channel number of the parameters means |
// | table_shape          | how a table's dimensions divide its numbers           |
// | plate_frame          | axes of a force platform from its corners             |
// | force_platform_table | what FORCE_PLATFORM says of each platform             |
// | platform_obstacles   | what keeps a platform from having a wrench            |
// | file_text            | texts of a file as UTF-8, and the bytes that hold one |
// | warnings             | what was odd about a file or an acquisition           |

#pragma once

// What everything of an acquisition is called in the store. Nowhere else are these names spelt.

namespace schema {

// Paths, from the root group on.

inline constexpr char format[] = "Format";
inline constexpr char data[] = "Format/Data";
inline constexpr char header[] = "Format/Header";
inline constexpr char events[] = "Format/Events"; ///< a set an event
inline constexpr char metadata[] = "Format/Metadata";
inline constexpr char metadata_point[] = "Format/Metadata/POINT";
inline constexpr char metadata_analog[] = "Format/Metadata/ANALOG";
inline constexpr char metadata_force_platform[] = "Format/Metadata/FORCE_PLATFORM";

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

/// The same from `format` on, for what is given that group.
namespace below_format {
inline constexpr char points[] = "Data/Points";
inline constexpr char metadata_event[] = "Metadata/EVENT";
inline constexpr char group_records[] = "Header/Groups";
inline constexpr char parameter_records[] = "Header/Parameters";
} // namespace below_format

/// Last components of those paths.
namespace name {
// Below `format`.
inline constexpr char data[] = "Data";
inline constexpr char header[] = "Header";
inline constexpr char events[] = "Events";
inline constexpr char metadata[] = "Metadata";
// Below `data`.
inline constexpr char points[] = "Points";
inline constexpr char analogs[] = "Analogs";
inline constexpr char analogs_export[] = "AnalogsExport";
inline constexpr char rotations[] = "Rotations";
inline constexpr char angles[] = "Angles";
inline constexpr char forces[] = "Forces";
inline constexpr char markers[] = "Markers";
inline constexpr char moments[] = "Moments";
inline constexpr char powers[] = "Powers";
// Below `header`: what a C3D file's group and parameter records say besides their values.
inline constexpr char group_records[] = "Groups";
inline constexpr char parameter_records[] = "Parameters";
// Below `metadata`.
inline constexpr char analog_group[] = "ANALOG";
inline constexpr char analysis[] = "ANALYSIS";
inline constexpr char point_group[] = "POINT";
// Below `skeleton`, and the set of a segment's group.
inline constexpr char segments[] = "Segments";
inline constexpr char segment_rotations[] = "T_SCS";
// Of a platform's group: the group of links to its channels, and its wrenches.
inline constexpr char platform_channels[] = "Channels";
inline constexpr char wrench_at_origin[] = "W_HO";
inline constexpr char wrench_at_point[] = "W_POA";
} // namespace name

/// Attributes of groups, sets and the header.
namespace attribute {
// Time base, of groups and sets.
inline constexpr char num_samples[] = "NumSamples"; ///< int64
inline constexpr char sample_rate[] = "SampleRate"; ///< float64, Hz
inline constexpr char start_time[] = "StartTime";   ///< float64, seconds

inline constexpr char device_type[] = "DeviceType"; ///< of groups: a text of `device`

// Of the set of a channel.
inline constexpr char relative_set_index[] = "RelativeSetIndex"; ///< int32
inline constexpr char description[] = "Description";
inline constexpr char label[] = "Label";
inline constexpr char unit[] = "Unit";
inline constexpr char metric_type[] = "MetricType"; ///< a point's kind, or `analog_type`
inline constexpr char gain[] = "Gain";              ///< int32, a code; of raw sets one a channel
inline constexpr char offset[] = "Offset";          ///< float32
inline constexpr char scale[] = "Scale";            ///< float32
inline constexpr char residuals[] =
    "Residuals"; ///< float32 a sample: the fourth word of the file's point records
inline constexpr char reliability[] = "Reliability"; ///< float32 a sample of rotations

// Of a raw set, an element a channel.
inline constexpr char labels[] = "Labels";
inline constexpr char set_names[] = "SetNames"; ///< of the sets that the channels become
inline constexpr char types[] = "Types";
inline constexpr char units[] = "Units";
inline constexpr char descriptions[] = "Descriptions";
inline constexpr char offsets[] = "Offsets";              ///< float32
inline constexpr char scales[] = "Scales";                ///< float32
inline constexpr char ratio[] = "Ratio";                  ///< int32: rows of rotations in a frame
inline constexpr char split_channels[] = "SplitChannels"; ///< int64: how many became sets
inline constexpr char columns[] =
    "Columns"; ///< int64: their places in the file, where only some of its channels were read

// Of the root: where the acquisition comes from. No file gets them.
inline constexpr char source_path[] = "SourcePath"; ///< the absolute path of the file that was read
inline constexpr char warnings[] = "Warnings";      ///< what was odd about it, where anything was
// Of the root: which part of it was read.
inline constexpr char wanted_kinds[] = "WantedKinds";   ///< while an importer reads a part
inline constexpr char unread_kinds[] = "UnreadKinds";   ///< an element a channel that was left out
inline constexpr char unread_labels[] = "UnreadLabels"; ///< likewise
inline constexpr char unread_units[] = "UnreadUnits";   ///< likewise
// Of the root: the same of a file whose channels were merged into those of its own.
inline constexpr char other_unread_kinds[] = "OtherUnreadKinds";
inline constexpr char other_unread_labels[] = "OtherUnreadLabels";
inline constexpr char other_unread_units[] = "OtherUnreadUnits";

// Of the header.
inline constexpr char analog_samples_per_frame[] = "NumberAnalogSamplesPerPointSample"; ///< int32
inline constexpr char interpolation_gap[] = "PointMaximumInterpolationGap";             ///< int32
inline constexpr char analog_values_per_frame[] = "TotalAnalogSamplesPer3dSample";      ///< int32
inline constexpr char first_frame[] = "FirstFrame";                                     ///< int32
inline constexpr char last_frame[] = "LastFrame";                                       ///< int32
inline constexpr char processor[] = "Processor"; ///< int32: 84, 85 or 86
inline constexpr char storage[] = "Storage";     ///< "integer" or "real"
inline constexpr char point_scale[] =
    "PointScale"; ///< float32: units a step of integer coordinates and of residuals
inline constexpr char section_head[] =
    "SectionHead"; ///< int16: first bytes of the parameter section
inline constexpr char header_block[] =
    "Block"; ///< uint8: all of it, where a reserved byte is not 0
inline constexpr char event_times[] = "EventTimes";       ///< float32, seconds
inline constexpr char event_labels[] = "EventLabels";     ///< without padding
inline constexpr char event_statuses[] = "EventStatuses"; ///< int32

// Of the header of a copy that is being written: the form that the file shall have.
inline constexpr char wanted_storage[] = "WantedStorage";     ///< "integer" or "real"
inline constexpr char wanted_processor[] = "WantedProcessor"; ///< int32, as `processor`

// Of an event's set.
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

// Of a platform's group.
inline constexpr char devices_index[] = "DevicesIndex"; ///< int32
inline constexpr char platform_type[] = "Type";         ///< int32
inline constexpr char corners[] = "Corners";            ///< float64, {4, 3}
inline constexpr char origin[] = "Origin";              ///< float64
inline constexpr char calibration[] = "CalibrationMatrix";
inline constexpr char pressure_polynomial[] = "CenterOfPressurePolynomial";
// Of the group of all platforms.
inline constexpr char detected_from[] = "DetectedFrom"; ///< the parameters that groups were made of
inline constexpr char undetected[] = "Undetected";      ///< why platforms have no group
inline constexpr char remarks_told[] = "Remarks";       ///< what else was logged
} // namespace attribute

/// Attributes of the two groups of records, an element a record.
namespace record {
inline constexpr char name[] = "Name";          ///< as the file spells it
inline constexpr char stored_name[] = "Stored"; ///< below `metadata`
inline constexpr char description[] = "Description";
inline constexpr char locked[] = "Locked"; ///< int16
inline constexpr char group_id[] = "Id";   ///< int16, of groups
// Of parameters.
inline constexpr char group[] = "Group"; ///< int16: index among the groups
inline constexpr char type[] = "Type";   ///< int16: the file's code
inline constexpr char width[] =
    "Width"; ///< int16: characters of a text; 0 for numbers, −1 without texts
inline constexpr char encoding[] = "Encoding"; ///< int16: 1 where a text is Windows-1252, else 0
} // namespace record

/// Parameters, which are attributes of the groups below `metadata`. Only those that more than a
/// file's format speaks of.
namespace parameter {
inline constexpr char used[] = "USED";
inline constexpr char labels[] = "LABELS";
inline constexpr char descriptions[] = "DESCRIPTIONS";
inline constexpr char units[] = "UNITS";
inline constexpr char rate[] = "RATE";     ///< Hz, of POINT and ANALOG
inline constexpr char frames[] = "FRAMES"; ///< of POINT
inline constexpr char bits[] = "BITS";     ///< of ANALOG: resolution
// Of FORCE_PLATFORM.
inline constexpr char type[] = "TYPE";
inline constexpr char corners[] = "CORNERS";
inline constexpr char origin[] = "ORIGIN";
inline constexpr char channel[] = "CHANNEL";
inline constexpr char calibration[] = "CAL_MATRIX";
inline constexpr char pressure_polynomial[] = "FPCOPPOLY";
} // namespace parameter

/// Values of `DeviceType`.
namespace device {
inline constexpr char mocap[] = "Mocap";
inline constexpr char emg[] = "EMG";
inline constexpr char adc[] = "ADC";
inline constexpr char event_to_export[] = "EventToExport";
inline constexpr char metadata[] = "Metadata";
} // namespace device

inline constexpr char unknown_unit[] = "Unknown"; ///< `Unit` that nobody has said yet
inline constexpr char analog_type[] = "Analog";   ///< `MetricType` of analog channels

inline constexpr int default_analog_resolution =
    12; // bits, where a file or a new acquisition says nothing else

} // namespace schema
