#include "plugins/c3d/written_content.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <strata/data_store.hpp>

#include "plugins/c3d/analogs/analog_columns.hpp"
#include "plugins/c3d/analogs/write_analogs.hpp"
#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/dec_range.hpp"
#include "plugins/c3d/events/write_events.hpp"
#include "plugins/c3d/frames/frame_range.hpp"
#include "plugins/c3d/parameters/header_attribute.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"
#include "plugins/c3d/parameters/standard_parameters.hpp"
#include "plugins/c3d/parameters/write_metadata.hpp"
#include "plugins/c3d/platforms/write_platform_channels.hpp"
#include "plugins/c3d/points/point_columns.hpp"
#include "plugins/c3d/points/point_scale.hpp"
#include "plugins/c3d/points/write_points.hpp"
#include "schema/force_platform_table.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

/// The group at `path`; one without content where there is none.
strata::data_group group_or_empty(const strata::data_group& parent, std::string_view path) {
    return parent.exists_group(path) ? parent.retrieve_group(path) : strata::data_store().root();
}

void require_samples(const strata::data_set& set, std::uint64_t components, std::uint64_t samples) {
    const auto shape = set.shape(false);
    const std::vector<std::int64_t> expected = {static_cast<std::int64_t>(components), 1,
                                                static_cast<std::int64_t>(samples)};
    if (strata::element_kind(set.type()) != strata::data_type::float64 ||
        shape.dimensions() != expected) {
        throw export_error("the channel '{}' does not hold {} samples of {} real components each",
                           set.name(), samples, components);
    }
}

point_source source_of(const strata::data_set& set, std::uint64_t frames) {
    require_samples(set, 3, frames);
    const auto buffer = strata::share_channel(set, 0);
    point_source source{
        set.name(),
        {sample_source(buffer), sample_source(buffer, frames), sample_source(buffer, 2 * frames)},
        std::nullopt};
    const auto residuals = set.retrieve_attribute(attribute::residuals);
    if (!residuals || strata::element_kind(residuals.type()) != strata::data_type::float32 ||
        residuals.shape().dimensions() !=
            std::vector<std::int64_t>{static_cast<std::int64_t>(frames)}) {
        return source;
    }
    source.words = sample_source(strata::share_elements(residuals));
    return source;
}

/// The labels of a set of the file that was read; none when there was no file.
std::vector<std::string> labels_read(const strata::data_group& data, std::string_view set) {
    if (!data.exists_set(set))
        return {};
    return schema::read_texts(data.retrieve_set(set).retrieve_attribute(attribute::labels));
}

std::uint64_t samples_per_frame_of(const strata::data_group& format) {
    const auto samples = schema::read_number<std::int64_t>(
        header_attribute(format, attribute::analog_samples_per_frame));
    return samples && *samples > 0 ? static_cast<std::uint64_t>(*samples) : 1;
}

section_mark mark_of(const strata::data_group& format) {
    const auto head =
        schema::read_numbers<std::int16_t>(header_attribute(format, attribute::section_head));
    if (head.size() < 2)
        return {};
    return {static_cast<unsigned>(head[0]), static_cast<unsigned>(head[1])};
}

/// Without samples only labels that take bytes make a reader believe in channels.
void require_label_bytes(written_group& group) {
    const auto* labels = group.find("LABELS");
    if (labels && labels->extents.size() == 2 && labels->extents.front() == 0) {
        const std::vector<std::string> empty(labels->extents.back());
        put_texts(group, "LABELS", empty, 1);
    }
}

float stored_rate(double rate) {
    const auto stored = static_cast<float>(rate);
    if (!std::isfinite(stored) || (stored == 0.0F && rate != 0.0))
        throw export_error("POINT:RATE is {} Hz, which no real of a C3D file holds", rate);
    return stored;
}

class content_builder {
  public:
    content_builder(const strata::data_group& root, schema::warnings& notes)
        : root_(root), format_(group_or_empty(root, schema::format)),
          data_(group_or_empty(format_, schema::name::data)), notes_(notes),
          time_base_(time_base_of(data_)),
          is_read_(format_.exists_group(schema::below_format::group_records)) {}

    written_content build() && {
        content_.parameters = written_metadata(format_, notes_);
        content_.mark = mark_of(format_);
        content_.frames.form = wanted_form(format_);
        content_.header.range =
            frame_range_of(time_base_.frames, time_base_.rate, time_base_.start_time_s);
        content_.header.interpolation_gap = interpolation_gap_of(format_);
        content_.header.rate = stored_rate(time_base_.rate);
        add_points();
        add_analogs();
        put_count(content_.parameters.reach("FORCE_PLATFORM"), "USED", platforms());
        content_.header.events = put_events(content_.parameters, format_);
        content_.rotations =
            put_rotations(content_.parameters, data_, time_base_.frames, time_base_.rate);
        if (content_.frames.form.format == number_format::dec)
            require_dec_range(content_.frames, analog_columns(data_), content_.rotations);
        if (!is_read_)
            complete_new_parameters(content_.parameters);
        return std::move(content_);
    }

  private:
    /// As many as the acquisition has. A group that is only one in a file, where case does not
    /// count, keeps its USED.
    [[nodiscard]] std::uint64_t platforms() const {
        if (root_.exists_group(schema::metadata_force_platform))
            return schema::force_platform_table(root_).count();
        return content_.parameters.as_table().count("FORCE_PLATFORM", "USED").value_or(0);
    }

    void add_points() {
        const auto points = point_columns(data_, notes_);
        auto& frames = content_.frames;
        frames.frames = time_base_.frames;
        for (const auto& point : points)
            frames.points.push_back(source_of(point.set, frames.frames));
        auto& header = content_.header;
        header.points = points.size();
        header.scale = point_scale_of(format_, frames.points, frames.frames, frames.form.storage);
        if (frames.form.storage == sample_storage::integer)
            make_integers(frames, format_, header.scale);

        auto& tree = content_.parameters;
        auto& group = tree.reach("POINT");
        put_count(group, "USED", points.size(), new_lock::on);
        put_real(group, "SCALE", header.scale, new_lock::on);
        put_real(group, "RATE", header.rate, new_lock::on);
        put_block(group, "DATA_START", 0);
        put_frame_range(tree, header.range, format_);
        put_points(tree, points, labels_read(data_, schema::name::points), notes_);
        if (frames.frames == 0)
            require_label_bytes(tree.reach("POINT"));
    }

    void add_analogs() {
        const auto columns = analog_columns(data_);
        auto& frames = content_.frames;
        frames.samples_per_frame = samples_per_frame_of(format_);
        const auto samples = frames.frames * frames.samples_per_frame;
        for (const auto& column : columns)
            require_samples(column.set, 1, samples);
        content_.header.channels = columns.size();
        content_.header.samples_per_frame = frames.samples_per_frame;

        const auto group = group_or_empty(data_, schema::name::analogs_export);
        const auto rate =
            is_read_ ? schema::read_number<double>(group.retrieve_attribute(attribute::sample_rate))
                           .value_or(0.0)
                     : 0.0;
        const bool same_count = labels_read(data_, schema::name::analogs).size() == columns.size();
        frames.channels = put_analogs(content_.parameters, columns,
                                      {frames.samples_per_frame, time_base_.rate, rate},
                                      {frames.form.storage, was_integer(format_)},
                                      same_count ? surplus::kept : surplus::dropped, notes_);
        // A file without channels may say that they have no samples, by the rate 0.
        const auto told = content_.parameters.as_table().number("ANALOG", "RATE");
        if (columns.empty() && frames.samples_per_frame == 1 && told == 0.0)
            content_.header.samples_per_frame = 0;
        if (frames.frames == 0)
            require_label_bytes(content_.parameters.reach("ANALOG"));
        put_platform_channels(content_.parameters, root_, columns);
    }

    const strata::data_group& root_;
    strata::data_group format_;
    strata::data_group data_;
    schema::warnings& notes_;
    point_time_base time_base_;
    bool is_read_;
    written_content content_;
};

} // namespace

written_content content_of(const strata::data_group& root, schema::warnings& notes) {
    return content_builder(root, notes).build();
}

} // namespace c3d
