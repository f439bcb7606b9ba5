#include "store/python.hpp"

#include "api/metadata/entry_record.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <fmt/format.h>
#include <strata/data_group.hpp>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "store/python_read.hpp"

namespace mox::metadata {

namespace {

namespace record = schema::record;

std::vector<std::string> stored_names(const strata::data_group& records) {
    return schema::read_texts(records.retrieve_attribute(record::stored_name));
}

/// Of several records of one name the first counts, as where files are written.
std::optional<std::size_t> group_index(const strata::data_group& groups, const std::string& group) {
    const auto names = stored_names(groups);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == group)
            return i;
    }
    return {};
}

std::optional<std::size_t> entry_index(const strata::data_group& groups,
                                       const strata::data_group& entries, const std::string& group,
                                       const std::string& entry) {
    const auto group_names = stored_names(groups);
    const auto names = stored_names(entries);
    auto owners = schema::read_numbers<std::int32_t>(entries.retrieve_attribute(record::group));
    owners.resize(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto owner = static_cast<std::size_t>(owners[i]);
        if (names[i] == entry && owner < group_names.size() && group_names[owner] == group)
            return i;
    }
    return {};
}

py_ref said_of(const strata::data_group& records, std::optional<std::size_t> index) {
    std::string description;
    bool locked = false;
    if (index) {
        auto descriptions = schema::read_texts(records.retrieve_attribute(record::description));
        auto locks = schema::read_numbers<std::int32_t>(records.retrieve_attribute(record::locked));
        descriptions.resize(*index + 1);
        locks.resize(*index + 1);
        description = descriptions[*index];
        locked = locks[*index] != 0;
    }
    return py_ref::checked(
        PyTuple_Pack(2, text_to_python(description).get(), locked ? Py_True : Py_False));
}

} // namespace

py_ref entry_record(strata::data_store acquisition, const std::string& group,
                    const std::string& entry) {
    const auto root = acquisition.root();
    const auto groups_path =
        fmt::format("{}/{}", schema::format, schema::below_format::group_records);
    const auto entries_path =
        fmt::format("{}/{}", schema::format, schema::below_format::parameter_records);
    if (!root.exists_group(groups_path) || !root.exists_group(entries_path))
        return said_of({}, {});
    const auto groups = root.retrieve_group(groups_path);
    if (entry.empty())
        return said_of(groups, group_index(groups, group));
    const auto entries = root.retrieve_group(entries_path);
    return said_of(entries, entry_index(groups, entries, group, entry));
}

} // namespace mox::metadata
