#include "plugins/c3d/exporter.hpp"

#include <algorithm>
#include <exception>
#include <new>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/file_writer.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"
#include "plugins/c3d/require_split.hpp"
#include "plugins/c3d/section_places.hpp"
#include "plugins/c3d/written_content.hpp"
#include "schema/names.hpp"

namespace c3d {

namespace {

/// The sections of a file before its samples, once their places are known.
struct file_head {
    header_block header;
    byte_list parameters;
};

/// Makes texts narrower where the parameters would not fit otherwise.
std::uint64_t fitted_blocks(parameter_tree& tree, schema::warnings& notes) {
    auto blocks = section_blocks(tree);
    if (blocks > most_section_blocks) {
        narrow_texts(tree);
        notes.add("the parameters would take {} blocks; texts are written without padding beyond "
                  "the longest of their list",
                  blocks);
        blocks = section_blocks(tree);
    }
    return blocks;
}

file_head make_head(written_content& content, const section_places& places,
                    const strata::data_group& format) {
    auto& tree = content.parameters;
    put_block(tree.reach("POINT"), "DATA_START", places.data);
    if (places.rotations != 0)
        put_block(tree.reach("ROTATION"), "DATA_START", places.rotations);
    content.header.data_start = places.data;
    const auto numbers = content.frames.form.format;
    return {header_block_of(content.header, format, numbers),
            section_bytes(tree, content.mark, numbers)};
}

void write_samples(file_writer& target, const written_content& content) {
    write_frames(target, content.frames);
    target.pad_block();
}

void write_rotations(file_writer& target, const written_content& content) {
    write_rows(target, content.rotations.columns, content.rotations.rows,
               content.frames.form.format);
    if (content.rotations.is_complete) // a reader would take padding for the rows that are missing
        target.pad_block();
}

void write_file(anvil::io_device& device, const strata::data_group& root, schema::warnings& notes) {
    if (!root.exists_group(schema::format))
        throw export_error("there is no group 'Format', which holds an acquisition");
    require_split(root);
    auto content = content_of(root, notes);
    // The places have a fixed width, so the section's length does not depend on them.
    const auto places = places_of(fitted_blocks(content.parameters, notes),
                                  content.frames.frames * content.frames.frame_bytes(),
                                  content.rotations.bytes(), content.rotations.is_complete);
    const auto head = make_head(content, places, root.retrieve_group(schema::format));
    file_writer target(device);
    byte_list bytes(head.header.begin(), head.header.end());
    bytes.insert(bytes.end(), head.parameters.begin(), head.parameters.end());
    target.write(bytes);
    if (places.rotations_come_first())
        write_rotations(target, content);
    write_samples(target, content);
    if (!places.rotations_come_first())
        write_rotations(target, content);
}

} // namespace

anvil::status exporter::write(anvil::io_device& device, strata::data_group source) const {
    schema::warnings notes;
    try {
        write_file(device, source, notes);
        notes.log(device.name());
        return {};
    } catch (const std::bad_alloc&) {
        return anvil::status::out_of_memory("not enough memory to write the acquisition");
    } catch (const std::exception& error) {
        notes.log(device.name());
        return anvil::status::failure(error.what());
    }
}

} // namespace c3d
