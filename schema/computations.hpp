#pragma once

// What the computations of the plugins are called, and the members of the object that tells them
// what to do.

namespace schema {

namespace computation {
inline constexpr char split_set[] = "tarvex.data-modifier.split-set";
inline constexpr char detect_rotations[] = "org.c3d.detect-rotations";
inline constexpr char detect_events[] = "org.c3d.events-detect";
inline constexpr char detect_platform[] = "org.c3d.forceplate-detect";
inline constexpr char ground_reaction_wrench[] = "classical-mechanics.ground-reaction-wrench";
} // namespace computation

namespace argument {
inline constexpr char source_group[] = "SourceGroup";
inline constexpr char destination_group[] = "DestinationGroup";
// Of split_set.
inline constexpr char source_set[] = "SourceSet";
inline constexpr char labels_filter[] = "LabelsFilter"; ///< labels of the channels to take
inline constexpr char attributes_split[] =
    "SourceAttributesSplit"; ///< names by names of the source
// Of detect_events: what joins the parts of a set's name.
inline constexpr char part_separator[] = "PartSeparator";
// Of detect_platform.
inline constexpr char metadata_source_group[] = "MetadataSourceGroup"; ///< what holds `format`
inline constexpr char platform_index[] = "ForceplateIndex";            ///< from 0
// Of ground_reaction_wrench.
inline constexpr char fz_threshold[] = "FzThreshold";                   ///< N, not negative
inline constexpr char global_transformation[] = "GlobalTransformation"; ///< laboratory's axes
inline constexpr char location[] = "Location";                          ///< a text of `location`
} // namespace argument

/// Values of `Location`: what the moment of a wrench is about.
namespace location {
inline constexpr char hardware_origin[] = "hardware-origin";
inline constexpr char point_of_application[] = "point-of-application";
} // namespace location

} // namespace schema
