#include "plugins/c3d/importer.hpp"

#include <exception>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "plugins/c3d/analogs/analog_offsets.hpp"
#include "plugins/c3d/analogs/read_analogs.hpp"
#include "plugins/c3d/bytes/import_error.hpp"
#include "plugins/c3d/header_group.hpp"
#include "plugins/c3d/parameters/read_metadata.hpp"
#include "plugins/c3d/points/read_points.hpp"
#include "plugins/c3d/rotations/read_rotations.hpp"
#include "plugins/c3d/samples/read_samples.hpp"
#include "schema/names.hpp"
#include "schema/partial_reading.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace {

/// All that is read from a file before the store is touched.
struct file_content {
    c3d_file file;
    frame_layout layout;
    point_texts texts;
    point_samples points;
    analog_samples analogs;
    std::optional<rotation_layout> rotations;
    std::vector<strata::channel_buffer> segments;
    schema::unread_channels unread;
};

/// Decodes, and true when any point of the file has a valid sample (decoder::points): what the
/// residuals of a file mean is a question to those as well that nobody wants.
bool read_and_judge(const file_reader& reader, const file_content& content, const decoder& kernels,
                    residual_rule rule, const sample_targets& targets) {
    if (read_samples(reader, content.layout, kernels, rule, targets))
        return true;
    if (targets.points.empty() || content.points.columns.size() == content.layout.points)
        return false;
    const auto every = allocate_points(content.layout, columns_of(content.texts, {}));
    return read_samples(reader, content.layout, kernels, rule, {every.targets(), {}});
}

/// Some writers give every sample a negative residual, or any bits. Where none is valid though
/// there are coordinates, the residuals are no residuals.
void read_without_residuals(const file_reader& reader, const file_content& content,
                            const decoder& kernels, std::span<const point_target> points,
                            schema::warnings& notes) {
    if (points.empty() || content.layout.frames == 0)
        return;
    if (read_and_judge(reader, content, kernels, residual_rule::ignored, {points, {}})) {
        notes.add("every sample of every point is marked as invalid, though there are coordinates; "
                  "the samples that hold them count as valid");
    } else {
        invalidate(content.points);
    }
}

/// Notes what nobody wants, and takes memory for the rest.
void prepare_channels(file_content& content, const schema::wanted_kinds& wanted) {
    const auto& texts = content.texts;
    const auto& layout = content.layout;
    content.points = allocate_points(layout, columns_of(texts, wanted));
    for (std::size_t i = 0; i < texts.labels.size(); ++i) {
        if (!wanted.contain(texts.kinds[i]->group_name))
            content.unread.add(texts.kinds[i]->group_name,
                               texts.labels[i].empty() ? texts.names[i] : texts.labels[i],
                               texts.units[i]);
    }
    const bool with_analogs = wanted.contain(schema::name::analogs);
    content.analogs = allocate_analogs(layout, with_analogs ? layout.channels : 0);
    if (!with_analogs)
        add_unread_analogs(content.unread, content.file, layout);
    if (content.rotations && !wanted.contain(schema::name::rotations)) {
        add_unread_rotations(content.unread, content.file, *content.rotations);
        content.rotations.reset();
    }
}

file_content read_content(const file_reader& reader, const schema::wanted_kinds& wanted,
                          schema::warnings& notes) {
    file_content content;
    content.file = open_c3d(reader, notes);
    content.layout = decide_layout(content.file, notes);
    content.rotations = decide_rotations(content.file, content.layout, notes);
    content.texts = texts_of_points(content.file, content.layout);
    prepare_channels(content, wanted);

    const auto sign = declared_sign(content.file.parameters).value_or(word_sign::with);
    const auto kernels = decoder_for(content.file.format, content.layout.storage, sign);
    const auto points = content.points.targets();
    const auto channels = content.analogs.targets();
    if (!read_and_judge(reader, content, kernels, residual_rule::decides, {points, channels})) {
        read_without_residuals(reader, content, kernels, points, notes);
    }
    if (content.rotations) {
        content.segments = read_rotations(reader, content.file.format, *content.rotations);
    }
    return content;
}

void create_tree(strata::data_group& target, file_content content, schema::warnings& notes) {
    const auto& file = content.file;
    const auto names = metadata_names_of(file.parameters);
    auto format = target.create_group(schema::format);
    auto data = format.create_group(schema::name::data);
    create_points(data, content.layout, content.texts, std::move(content.points));
    create_analogs(data, file, content.layout, std::move(content.analogs), notes);
    if (content.rotations) {
        create_rotations(data, file, *content.rotations, content.layout.start_time_s(),
                         std::move(content.segments));
    }
    create_metadata(format, file.parameters, names, file.size, notes);
    create_header_group(format, file, content.layout, names);
    if (const auto lines = notes.lines(); !lines.empty())
        schema::write_texts(target, schema::attribute::warnings, lines);
    schema::keep_unread(target, content.unread);
}

} // namespace

bool importer::accepts(anvil::io_device& device) const {
    try {
        return looks_like_c3d(file_reader(device));
    } catch (const std::exception&) {
        return false; // nothing is known about a file that cannot be read
    }
}

anvil::status importer::read(anvil::io_device& device, strata::data_group target) const {
    const auto name = device.name();
    const auto located = [&](const auto& text) { return fmt::format("'{}': {}", name, text); };
    using anvil::status;
    schema::warnings notes;
    try {
        const file_reader reader(device);
        const schema::wanted_kinds wanted(target);
        create_tree(target, read_content(reader, wanted, notes), notes);
        notes.log(name);
        return {};
    } catch (const import_error& error) {
        notes.log(name);
        return status::failure(located(fmt::format("byte {}: {}", error.offset(), error.what())));
    } catch (const std::bad_alloc&) {
        return status::out_of_memory(located(
            fmt::format("not enough memory for the samples of a file of {} bytes", device.size())));
    } catch (const std::exception& error) {
        return status::failure(located(error.what()));
    }
}

} // namespace c3d
