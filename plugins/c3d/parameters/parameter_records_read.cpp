#include "plugins/c3d/parameters/parameter_records_read.hpp"

#include "schema/read_attribute.hpp"

namespace c3d {

namespace {

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
        return schema::read_texts(group_.retrieve_attribute("Stored")).size();
    }

  private:
    const strata::data_group& group_;
};

std::vector<kept_group> read_groups(const strata::data_group& group) {
    const columns all(group);
    const auto count = all.count();
    const auto names = all.texts("Name", count);
    const auto stored = all.texts("Stored", count);
    const auto descriptions = all.texts("Description", count);
    const auto ids = all.numbers("Id", count);
    const auto locks = all.numbers("Locked", count);
    std::vector<kept_group> records;
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
    const auto owners = all.numbers("Group", count);
    const auto names = all.texts("Name", count);
    const auto stored = all.texts("Stored", count);
    const auto types = all.numbers("Type", count);
    const auto widths = all.numbers("Width", count);
    const auto encodings = all.numbers("Encoding", count);
    const auto locks = all.numbers("Locked", count);
    const auto descriptions = all.texts("Description", count);
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

kept_records read_kept_records(const strata::data_group& format) {
    kept_records records;
    if (!format.exists_group("Header/Groups") || !format.exists_group("Header/Parameters"))
        return records;
    records.groups = read_groups(format.retrieve_group("Header/Groups"));
    records.parameters =
        read_parameters(format.retrieve_group("Header/Parameters"), records.groups);
    return records;
}

} // namespace c3d
