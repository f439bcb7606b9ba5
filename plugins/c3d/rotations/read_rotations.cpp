#include "plugins/c3d/rotations/read_rotations.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <strata/data_set.hpp>
#include <strata/data_type.hpp>

#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/samples/read_samples.hpp"
#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

std::vector<std::string> texts_of(const c3d_file& file, const char* list, std::size_t segments) {
    const channel_entries entries(file.parameters, "ROTATION", list);
    std::vector<std::string> texts(segments);
    for (std::size_t i = 0; i < segments; ++i)
        texts[i] = entries.text(i).value_or("");
    return texts;
}

} // namespace

std::vector<strata::channel_buffer> read_rotations(const file_reader& reader, number_format format,
                                                   const rotation_layout& layout) {
    auto segments = strata::channel_buffer::allocate(strata::data_type::float32,
                                                     rotation_components * layout.rows,
                                                     static_cast<std::size_t>(layout.segments));
    std::vector<float*> columns;
    columns.reserve(segments.size() * rotation_components);
    for (const auto& segment : segments) {
        auto* elements = reinterpret_cast<float*>(segment.data());
        for (std::uint64_t i = 0; i < rotation_components; ++i)
            columns.push_back(elements + i * layout.rows);
    }
    const auto kernels = decoder_for(format, sample_storage::real, word_sign::with);
    read_rows(reader, {layout.offset, layout.row_bytes(), layout.rows}, kernels, columns);
    return segments;
}

void add_unread_rotations(schema::unread_channels& unread, const c3d_file& file,
                          const rotation_layout& layout) {
    const auto labels =
        texts_of(file, schema::parameter::labels, static_cast<std::size_t>(layout.segments));
    const auto names = schema::distinct_names(labels);
    for (std::size_t i = 0; i < labels.size(); ++i)
        unread.add(schema::name::rotations, labels[i].empty() ? names[i] : labels[i], "");
}

void create_rotations(strata::data_group& data, const c3d_file& file, const rotation_layout& layout,
                      double start_time_s, std::vector<strata::channel_buffer> segments) {
    const auto count = segments.size();
    auto set = strata::create_channel_set(data, schema::name::rotations, rotation_components,
                                          layout.rows, std::move(segments));
    for (const auto& [name, list] : rotation_texts)
        schema::write_texts(set, name, texts_of(file, list, count));
    schema::write_number(set, attribute::ratio, static_cast<std::int32_t>(layout.ratio));
    schema::write_number(set, attribute::num_samples, static_cast<std::int64_t>(layout.rows));
    schema::write_number(set, attribute::sample_rate, layout.rate);
    schema::write_number(set, attribute::start_time, start_time_s);
}

} // namespace c3d
