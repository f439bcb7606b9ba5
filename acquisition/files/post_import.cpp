#include "acquisition/files/post_import.hpp"

#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <strata/callable_builder.hpp>

#include "acquisition/files/source_record.hpp"
#include "schema/computations.hpp"
#include "schema/names.hpp"
#include "schema/parameter_list.hpp"
#include "schema/point_kind_table.hpp"
#include "schema/read_attribute.hpp"
#include "schema/split_record.hpp"
#include "store/path_helpers.hpp"
#include "store/store_log.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace argument = schema::argument;

namespace attribute = schema::attribute;

namespace {

/// Throws std::bad_alloc when memory is short: what a step leaves out then is no fault of the file.
anvil::status evaluate(strata::data_group root, const anvil::json& parameters) {
    auto status = strata::callable_builder().evaluate(root, parameters);
    if (status.is_out_of_memory())
        throw std::bad_alloc();
    return status;
}

/// Labels of the raw points of one type, in source order.
std::vector<std::string> labels_of_type(const strata::data_set& points, std::string_view type) {
    const auto labels = read_vector<std::string>(points.retrieve_attribute(attribute::labels));
    const auto types = read_vector<std::string>(points.retrieve_attribute(attribute::types));
    std::vector<std::string> chosen;
    for (std::size_t i = 0; i < labels.size() && i < types.size(); ++i) {
        if (types[i] == type)
            chosen.push_back(labels[i]);
    }
    return chosen;
}

/// Writes the file's description of each point, by the point's column; empty beyond the list.
void describe_points(const strata::data_group& root, const strata::data_set& points,
                     const strata::data_group& group) {
    const auto columns =
        schema::read_numbers<std::int64_t>(points.retrieve_attribute(attribute::columns));
    const auto descriptions =
        schema::read_parameter_list(root, schema::metadata_point, schema::parameter::descriptions);
    if (!descriptions)
        return;
    for (const auto& set : sets_of(group)) {
        if (!set.exists_attribute(attribute::relative_set_index))
            continue;
        auto index = read<std::int64_t>(set.retrieve_attribute(attribute::relative_set_index));
        if (!columns.empty()) // of a part of the points, whose indices are their own
            index = columns.at(static_cast<std::size_t>(index));
        const bool is_listed = index >= 0 && std::cmp_less(index, descriptions->size());
        write_or_create(set, attribute::description,
                        is_listed ? (*descriptions)[static_cast<std::size_t>(index)]
                                  : std::string());
    }
}

void create_point_group_without_channels(strata::data_group root, const schema::point_kind& kind,
                                         const strata::data_set& points) {
    auto group = retrieve_or_create_group(root, kind.path);
    for (const char* name :
         {attribute::start_time, attribute::num_samples, attribute::sample_rate}) {
        if (points.exists_attribute(name))
            group.copy_attribute(points.retrieve_attribute(name));
    }
    write_or_create(group, attribute::device_type, std::string(schema::device::mocap));
}

void note_missing(const strata::data_group& root, std::string_view what, std::string_view reason) {
    const auto text = fmt::format("Reading goes on without {}: {}", what, reason);
    log_store_failure(text);
    add_warning(root, text);
}

/// Evaluates a step that never fails the reading: `what` it should have made is missing then, and
/// log and acquisition say so. False when it failed.
bool evaluate_or_note(const strata::data_group& root, std::string_view what,
                      const anvil::json& parameters) {
    const auto status = evaluate(root, parameters);
    if (!status)
        note_missing(root, what, status.message("; "));
    return static_cast<bool>(status);
}

/// Makes the group of a kind and in it the sets of its points, which have these labels. False when
/// the points stay without sets.
bool split_points_of_kind(strata::data_group root, const schema::point_kind& kind,
                          const strata::data_set& points, const std::vector<std::string>& labels) {
    const anvil::json parameters = {{"callable_unit", schema::computation::split_set},
                                    {argument::source_set, schema::points},
                                    {argument::labels_filter, labels},
                                    {argument::destination_group, kind.path},
                                    {argument::attributes_split,
                                     {{attribute::units, attribute::unit},
                                      {attribute::types, attribute::metric_type},
                                      {attribute::labels, attribute::label},
                                      {attribute::descriptions, attribute::description}}}};
    const auto what = fmt::format("the points of '{}'", kind.path);
    const bool done = labels.empty() || evaluate_or_note(root, what, parameters);
    if (labels.empty() || !root.exists_group(kind.path)) {
        create_point_group_without_channels(root, kind, points);
        return done;
    }
    auto group = root.retrieve_group(kind.path);
    write_or_create(group, attribute::device_type, std::string(schema::device::mocap));
    describe_points(root, points, group);
    return done;
}

void split_points(const strata::data_group& root) {
    const auto points =
        root.exists_set(schema::points) ? root.retrieve_set(schema::points) : strata::data_set();
    if (!points)
        throw_runtime_error(fmt::format("The importer gave no set '{}'", schema::points));
    std::uint64_t known = 0;
    std::uint64_t split = 0;
    for (const auto& kind : schema::point_kind_table) {
        const auto labels = labels_of_type(points, kind.word);
        known += labels.size();
        if (split_points_of_kind(root, kind, points, labels))
            split += labels.size();
    }
    if (const auto all = schema::raw_channels(points); known < all)
        note_missing(root, fmt::format("{} points", all - known),
                     "their type is none of the five kinds");
    schema::record_split(points, split);
}

void split_analogs(const strata::data_group& root) {
    const bool done = evaluate_or_note(root, "the analog channels",
                                       {{"callable_unit", schema::computation::split_set},
                                        {argument::source_set, schema::analogs},
                                        {argument::destination_group, schema::analogs_export},
                                        {argument::attributes_split,
                                         {{attribute::units, attribute::unit},
                                          {attribute::gain, attribute::gain},
                                          {attribute::scales, attribute::scale},
                                          {attribute::offsets, attribute::offset},
                                          {attribute::descriptions, attribute::description},
                                          {attribute::labels, attribute::label},
                                          {attribute::types, attribute::metric_type}}}});
    if (root.exists_set(schema::analogs)) {
        const auto channels = root.retrieve_set(schema::analogs);
        schema::record_split(channels, done ? schema::raw_channels(channels) : 0);
    }
    if (root.exists_group(schema::analogs_export)) {
        write_or_create(root.retrieve_group(schema::analogs_export), attribute::device_type,
                        std::string(schema::device::adc));
    }
}

void detect_rotations(const strata::data_group& root) {
    const auto status = evaluate(root, {{"callable_unit", schema::computation::detect_rotations},
                                        {argument::source_group, schema::format},
                                        {argument::destination_group, schema::skeleton}});
    if (!status)
        // Kept with "occured": scripts compare this text.
        throw_runtime_error("An error has occured while trying to process rotation data.");
}

void detect_events(const strata::data_group& root) {
    (void)evaluate_or_note(root, "the events",
                           {{"callable_unit", schema::computation::detect_events},
                            {argument::source_group, ""},
                            {argument::destination_group, schema::events},
                            {argument::part_separator, "_"}});
    if (root.exists_group(schema::events)) {
        write_or_create(root.retrieve_group(schema::events), attribute::device_type,
                        std::string(schema::device::event_to_export));
    }
}

} // namespace

void shape_imported_layout(strata::data_group root) {
    split_points(root);
    split_analogs(root);
    detect_rotations(root);
    detect_events(root);
    if (root.exists_group(schema::metadata)) {
        write_or_create(root.retrieve_group(schema::metadata), attribute::device_type,
                        std::string(schema::device::metadata));
    }
}

} // namespace mox
