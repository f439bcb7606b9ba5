#include "plugins/c3d/parameters/write_metadata.hpp"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include <strata/data_store.hpp>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"
#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/parameters/kept_records.hpp"
#include "plugins/c3d/parameters/stored_attribute.hpp"
#include "schema/file_text.hpp"
#include "schema/names.hpp"

namespace c3d {

namespace {

constexpr std::array<const char*, 3> first_groups = {"POINT", "ANALOG", "FORCE_PLATFORM"};

/// What follows from points and channels, whatever a script has said of it.
constexpr std::array<std::string_view, 7> derived_of_points = {
    "USED", "SCALE", "RATE", "DATA_START", "FRAMES", "LABELS", "DESCRIPTIONS"};
constexpr std::array<std::string_view, 8> derived_of_channels = {
    "USED", "LABELS", "DESCRIPTIONS", "SCALE", "OFFSET", "UNITS", "GAIN", "RATE"};

bool is_derived(std::string_view group, std::string_view name) {
    const auto base = list_name(name);
    const auto has = [&](const auto& names) {
        return std::any_of(names.begin(), names.end(),
                           [&](auto other) { return same_name(other, base); });
    };
    return (same_name(group, "POINT") && has(derived_of_points)) ||
           (same_name(group, "ANALOG") && has(derived_of_channels));
}

std::string stored_name(const std::string& text) {
    return schema::as_stored_within(text, longest_name);
}

std::string stored_description(const std::string& text) {
    return schema::as_stored_within(text, longest_description);
}

/// Names that a reader takes for one, whatever their case.
class names_taken {
  public:
    explicit names_taken(std::string what) : what_(std::move(what)) {}

    void take(const std::string& name) {
        const auto key = upper_case(schema::without_padding(name));
        const auto [entry, is_new] = taken_.emplace(key, name);
        if (!is_new) {
            throw export_error("the {} '{}' and '{}' would be one in a C3D file, which does not "
                               "tell upper from lower case",
                               what_, entry->second, name);
        }
    }

  private:
    std::string what_;
    std::unordered_map<std::string, std::string> taken_;
};

class tree_builder {
  public:
    tree_builder(const strata::data_group& metadata, kept_records records, schema::warnings& notes)
        : metadata_(metadata), records_(std::move(records)), notes_(notes) {}

    parameter_tree build() && {
        std::set<std::string> done;
        for (const auto& record : records_.groups) {
            if (metadata_.exists_group(record.stored) && done.insert(record.stored).second)
                add_group(record);
        }
        if (records_.groups.empty()) {
            for (const auto* name : first_groups)
                add_group({name, name, 0, false, {}});
            done.insert(first_groups.begin(), first_groups.end());
        }
        for (const auto& name : metadata_.list_group_children_name()) {
            if (!done.contains(name))
                add_group({name, name, 0, false, {}});
        }
        return std::move(tree_);
    }

  private:
    void add_group(const kept_group& record) {
        groups_taken_.take(record.name);
        written_group made;
        made.name = stored_name(record.name);
        made.description = stored_description(record.description);
        made.id = record.id;
        made.locked = record.locked;
        auto& group = tree_.add(std::move(made));
        if (metadata_.exists_group(record.stored))
            add_parameters(group, record.stored, metadata_.retrieve_group(record.stored));
    }

    void add_parameters(written_group& group, const std::string& stored,
                        const strata::data_group& source) {
        if (const auto inner = source.list_group_children_name(); !inner.empty()) {
            throw export_error("the metadata group '{}' has the group '{}' in it; groups of a C3D "
                               "file have parameters only",
                               stored, inner.front());
        }
        names_taken taken("parameters of the group '" + stored + "'");
        std::set<std::string> done;
        for (const auto& record : records_.parameters) {
            if (record.group != stored || !source.exists_attribute(record.stored) ||
                !done.insert(record.stored).second) {
                continue;
            }
            add_parameter(group, taken, record, source);
        }
        for (const auto& name : source.list_attributes_name()) {
            if (!done.contains(name))
                add_parameter(group, taken, {stored, name, name, 0, 0, false, false, {}}, source);
        }
    }

    void add_parameter(written_group& group, names_taken& taken, const kept_parameter& record,
                       const strata::data_group& source) {
        taken.take(record.name);
        try {
            keep_parameter(group, record, source);
        } catch (const export_error& error) {
            if (!is_derived(group.name, record.name))
                throw;
            notes_.add("{}; it is made anew", error.what());
        }
    }

    static void keep_parameter(written_group& group, const kept_parameter& record,
                               const strata::data_group& source) {
        auto item = stored_attribute(source.retrieve_attribute(record.stored), group.name, record);
        item.name = stored_name(record.name);
        item.description = stored_description(record.description);
        item.locked = record.locked;
        group.parameters.push_back(std::move(item));
    }

    const strata::data_group& metadata_;
    kept_records records_;
    schema::warnings& notes_;
    parameter_tree tree_;
    names_taken groups_taken_{"metadata groups"};
};

} // namespace

parameter_tree written_metadata(const strata::data_group& format, schema::warnings& notes) {
    const auto metadata = format.exists_group(schema::name::metadata)
                              ? format.retrieve_group(schema::name::metadata)
                              : strata::data_store().root();
    for (const auto& name : metadata.list_attributes_name()) {
        if (name != schema::attribute::device_type)
            notes.add("the metadata '{}' are in no group; a C3D file has no place for them", name);
    }
    return tree_builder(metadata, read_kept_records(format), notes).build();
}

} // namespace c3d
