#include "plugins/c3d/export/exporter.hpp"

#include <algorithm>
#include <exception>
#include <new>

#include "plugins/c3d/export/acquisition_content.hpp"
#include "plugins/c3d/export/export_error.hpp"
#include "plugins/c3d/export/output.hpp"
#include "plugins/c3d/export/put_parameter.hpp"
#include "plugins/c3d/file/file_reader.hpp"

namespace c3d {

namespace {

constexpr std::uint64_t largest_block_number = 65535;

std::uint64_t blocks_of(std::uint64_t bytes) { return (bytes + block_bytes - 1) / block_bytes; }

/// The sections of a file before its samples, once their places are known.
struct file_head {
    header_block header;
    byte_list parameters;
};

file_head make_head(acquisition_content& content, const strata::data_group& format) {
    auto& tree = content.parameters;
    // The places have a fixed width, so the section's length does not depend on them.
    const auto blocks = blocks_of(section_bytes(tree, content.mark).size());
    const auto data_start = 2 + blocks;
    const auto data_blocks = blocks_of(content.frames.frames * content.frames.frame_bytes());
    put_block(tree.reach("POINT"), "DATA_START", data_start);
    if (content.rotations.bytes() != 0) {
        const auto rotation_start = data_start + data_blocks;
        if (rotation_start > largest_block_number) {
            throw export_error("ROTATION:DATA_START would be block {}; a C3D file holds {}",
                               rotation_start, largest_block_number);
        }
        put_block(tree.reach("ROTATION"), "DATA_START", rotation_start);
    }
    content.header.data_start = data_start;
    return {header_block_of(content.header, format), section_bytes(tree, content.mark)};
}

void write_file(anvil::io_device& device, const strata::data_group& root, warnings& notes) {
    if (!root.exists_group("Format"))
        throw export_error("there is no group 'Format', which holds an acquisition");
    auto content = content_of(root, notes);
    const auto head = make_head(content, root.retrieve_group("Format"));
    output target(device);
    byte_list bytes(head.header.begin(), head.header.end());
    bytes.insert(bytes.end(), head.parameters.begin(), head.parameters.end());
    target.write(bytes);
    write_frames(target, content.frames);
    target.pad_block();
    write_rows(target, content.rotations.columns, content.rotations.rows);
    target.pad_block();
}

} // namespace

anvil::status exporter::write(anvil::io_device& device, strata::data_group source) const {
    warnings notes;
    try {
        write_file(device, source, notes);
        notes.log(device.name());
        return {};
    } catch (const std::bad_alloc&) {
        return anvil::status::failure("not enough memory to write the acquisition");
    } catch (const std::exception& error) {
        notes.log(device.name());
        return anvil::status::failure(error.what());
    }
}

} // namespace c3d
