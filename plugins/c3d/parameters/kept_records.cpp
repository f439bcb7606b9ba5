#include "plugins/c3d/parameters/kept_records.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "schema/file_text.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace {

namespace record = schema::record;

std::int16_t width_of(const parameter& item) {
    if (item.type != element_type::character)
        return 0;
    return item.dimensions.count() == 0 ? std::int16_t{-1}
                                        : static_cast<std::int16_t>(item.text_width());
}

/// 1 where a text is not UTF-8 in the file.
std::int16_t encoding_of(const parameter& item) {
    if (item.type != element_type::character || item.data.empty())
        return 0;
    for (std::uint64_t i = 0; i < item.text_count(); ++i) {
        const auto text = item.text(i);
        if (schema::as_utf8(text) != text)
            return 1;
    }
    return 0;
}

void create_groups(strata::data_group& header, const parameter_table& table,
                   const metadata_names& names) {
    std::vector<std::string> spelled;
    std::vector<std::string> descriptions;
    std::vector<std::int16_t> ids;
    std::vector<std::int16_t> locks;
    for (const auto& group : table.groups()) {
        spelled.push_back(group.name);
        descriptions.push_back(group.description);
        ids.push_back(group.id);
        locks.push_back(group.locked ? 1 : 0);
    }
    auto records = header.create_group(schema::name::group_records);
    schema::write_texts(records, record::name, spelled);
    schema::write_texts(records, record::stored_name, names.groups);
    schema::write_numbers(records, record::group_id, ids);
    schema::write_numbers(records, record::locked, locks);
    schema::write_texts(records, record::description, descriptions);
}

std::vector<std::size_t> owners_of(const parameter_table& table) {
    std::vector<std::size_t> owners(table.parameters().size());
    for (std::size_t i = 0; i < table.groups().size(); ++i) {
        for (auto index : table.groups()[i].parameters)
            owners[index] = i;
    }
    return owners;
}

void create_parameters(strata::data_group& header, const parameter_table& table,
                       const metadata_names& names) {
    std::vector<std::string> spelled;
    std::vector<std::string> stored;
    std::vector<std::string> descriptions;
    std::vector<std::int16_t> groups;
    std::vector<std::int16_t> types;
    std::vector<std::int16_t> widths;
    std::vector<std::int16_t> encodings;
    std::vector<std::int16_t> locks;
    const auto owners = owners_of(table);
    for (std::size_t i = 0; i < owners.size(); ++i) {
        if (names.parameters[i].empty())
            continue;
        const auto& item = table.parameters()[i];
        spelled.push_back(schema::as_utf8(schema::without_padding(item.name)));
        stored.push_back(names.parameters[i]);
        descriptions.push_back(schema::as_utf8(schema::without_padding(item.description)));
        groups.push_back(static_cast<std::int16_t>(owners[i]));
        types.push_back(static_cast<std::int16_t>(item.type));
        widths.push_back(width_of(item));
        encodings.push_back(encoding_of(item));
        locks.push_back(item.locked ? 1 : 0);
    }
    auto records = header.create_group(schema::name::parameter_records);
    schema::write_numbers(records, record::group, groups);
    schema::write_texts(records, record::name, spelled);
    schema::write_texts(records, record::stored_name, stored);
    schema::write_numbers(records, record::type, types);
    schema::write_numbers(records, record::width, widths);
    schema::write_numbers(records, record::encoding, encodings);
    schema::write_numbers(records, record::locked, locks);
    schema::write_texts(records, record::description, descriptions);
}

/// Array attributes of one length.
class columns {
  public:
    explicit columns(const strata::data_group& group) : group_(group) {}

    [[nodiscard]] std::vector<std::string> texts(const char* name, std::size_t count) const {
        auto values = schema::read_texts(group_.retrieve_attribute(name));
        values.resize(count);
        return values;
    }
    [[nodiscard]] std::vector<std::int32_t> numbers(const char* name, std::size_t count) const {
        auto values = schema::read_numbers<std::int32_t>(group_.retrieve_attribute(name));
        values.resize(count);
        return values;
    }
    [[nodiscard]] std::size_t count() const {
        return schema::read_texts(group_.retrieve_attribute(record::stored_name)).size();
    }

  private:
    const strata::data_group& group_;
};

std::vector<kept_group> read_groups(const strata::data_group& group) {
    const columns all(group);
    const auto count = all.count();
    const auto names = all.texts(record::name, count);
    const auto stored = all.texts(record::stored_name, count);
    const auto descriptions = all.texts(record::description, count);
    const auto ids = all.numbers(record::group_id, count);
    const auto locks = all.numbers(record::locked, count);
    std::vector<kept_group> records;
    records.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        records.push_back({names[i].empty() ? stored[i] : names[i], stored[i],
                           static_cast<std::uint8_t>(ids[i]), locks[i] != 0, descriptions[i]});
    }
    return records;
}

std::vector<kept_parameter> read_parameters(const strata::data_group& group,
                                            const std::vector<kept_group>& groups) {
    const columns all(group);
    const auto count = all.count();
    const auto owners = all.numbers(record::group, count);
    const auto names = all.texts(record::name, count);
    const auto stored = all.texts(record::stored_name, count);
    const auto types = all.numbers(record::type, count);
    const auto widths = all.numbers(record::width, count);
    const auto encodings = all.numbers(record::encoding, count);
    const auto locks = all.numbers(record::locked, count);
    const auto descriptions = all.texts(record::description, count);
    std::vector<kept_parameter> records;
    for (std::size_t i = 0; i < count; ++i) {
        const auto owner = static_cast<std::size_t>(owners[i]);
        if (owners[i] < 0 || owner >= groups.size())
            continue;
        records.push_back({groups[owner].stored, names[i].empty() ? stored[i] : names[i], stored[i],
                           types[i], widths[i], encodings[i] != 0, locks[i] != 0, descriptions[i]});
    }
    return records;
}

} // namespace

void create_kept_records(strata::data_group& header, const parameter_table& table,
                         const metadata_names& names) {
    create_groups(header, table, names);
    create_parameters(header, table, names);
}

kept_records read_kept_records(const strata::data_group& format) {
    kept_records records;
    if (!format.exists_group(schema::below_format::group_records) ||
        !format.exists_group(schema::below_format::parameter_records))
        return records;
    records.groups = read_groups(format.retrieve_group(schema::below_format::group_records));
    records.parameters = read_parameters(
        format.retrieve_group(schema::below_format::parameter_records), records.groups);
    return records;
}

} // namespace c3d
