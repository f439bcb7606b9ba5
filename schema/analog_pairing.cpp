#include "schema/analog_pairing.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "schema/parameter_list.hpp"
#include "schema/partial_reading.hpp"
#include "schema/read_attribute.hpp"

namespace schema {

namespace {

/// What pairing needs to know of a column: the texts are empty where there are none.
struct column {
    std::string name;  ///< of the set that reading a file makes
    std::string label; ///< the entry's text
};

/// Number of columns of the file that the acquisition was read from.
std::optional<std::size_t> columns_of_file(const strata::data_group& root) {
    if (!root.exists_set(analogs))
        return std::nullopt;
    const auto shape = root.retrieve_set(analogs).shape(false);
    if (shape.dimensions().size() != 3)
        return std::nullopt;
    return static_cast<std::size_t>(shape.dimensions()[1]);
}

std::vector<column> labelled_columns(const strata::data_group& root,
                                     const std::vector<std::string>& labels) {
    // Names depend on all labels of a file, and on no others.
    const auto read = columns_of_file(root).value_or(labels.size());
    auto labels_read = labels;
    labels_read.resize(read);
    auto names = distinct_names(labels_read);
    std::vector<column> columns(std::max(read, labels.size()));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i].label = i < labels.size() ? labels[i] : std::string();
        columns[i].name = i < read ? std::move(names[i]) : path_component(columns[i].label);
    }
    return columns;
}

/// Names of the sets that the columns of the file became.
std::vector<std::string> set_names(const strata::data_group& root) {
    if (!root.exists_set(analogs))
        return {};
    return read_texts(root.retrieve_set(analogs).retrieve_attribute(attribute::set_names));
}

/// The columns that something but the order of the channels tells of.
std::vector<column> known_columns(const strata::data_group& root) {
    std::vector<column> columns;
    if (const auto labels = read_parameter_list(root, metadata_analog, parameter::labels)) {
        columns = labelled_columns(root, *labels);
    } else {
        for (auto& name : set_names(root))
            columns.push_back({std::move(name), {}});
    }
    // Columns that were not read keep their numbers.
    const auto unread = unread_of_file(root).labels_of(schema::name::analogs).size();
    columns.resize(std::max(columns.size(), unread));
    return columns;
}

/// The channels that no column has yet.
class free_sets {
  public:
    explicit free_sets(std::vector<strata::data_set> sets) : sets_(std::move(sets)) {
        for (std::size_t i = 0; i < sets_.size(); ++i)
            by_name_.emplace(sets_[i].name(), i);
        taken_.resize(sets_.size());
    }

    strata::data_set take_named(const std::string& name) {
        const auto found = by_name_.find(name);
        return found == by_name_.end() ? strata::data_set() : take(found->second);
    }

    strata::data_set take_labelled(const std::string& label) {
        if (by_label_.empty())
            list_labels();
        const auto found = by_label_.find(label);
        if (label.empty() || found == by_label_.end())
            return {};
        auto& [indices, next] = found->second;
        while (next < indices.size() && taken_[indices[next]])
            ++next;
        return next == indices.size() ? strata::data_set() : take(indices[next]);
    }

    [[nodiscard]] std::vector<strata::data_set> rest() const {
        std::vector<strata::data_set> sets;
        for (std::size_t i = 0; i < sets_.size(); ++i) {
            if (!taken_[i])
                sets.push_back(sets_[i]);
        }
        return sets;
    }

  private:
    struct labelled {
        std::vector<std::size_t> indices; ///< of the sets with one label
        std::size_t next = 0;             ///< the first that may be free
    };

    strata::data_set take(std::size_t index) {
        if (taken_[index])
            return {};
        taken_[index] = true;
        return sets_[index];
    }

    void list_labels() {
        for (std::size_t i = 0; i < sets_.size(); ++i) {
            auto texts = read_texts(sets_[i].retrieve_attribute(attribute::label));
            if (!texts.empty())
                by_label_[std::move(texts.front())].indices.push_back(i);
        }
    }

    std::vector<strata::data_set> sets_;
    std::vector<bool> taken_;
    std::unordered_map<std::string, std::size_t> by_name_;
    std::unordered_map<std::string, labelled> by_label_; // made when a name is not found
};

std::vector<strata::data_set> pair(const std::vector<column>& columns,
                                   const std::vector<std::string>& names_read, free_sets& sets) {
    std::vector<strata::data_set> paired(columns.size());
    // First all names: a set is not given away for its label while its own column asks for it.
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i].name.empty())
            paired[i] = sets.take_named(columns[i].name);
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!paired[i] && !columns[i].label.empty())
            paired[i] = sets.take_labelled(columns[i].label);
    }
    // What is left of an entry whose text was edited.
    for (std::size_t i = 0; i < columns.size() && i < names_read.size(); ++i) {
        if (!paired[i])
            paired[i] = sets.take_named(names_read[i]);
    }
    return paired;
}

} // namespace

std::vector<strata::data_set> sets_by_index(const strata::data_group& group) {
    constexpr auto without_index = std::numeric_limits<std::int64_t>::max();
    std::vector<std::pair<std::int64_t, strata::data_set>> sets;
    for (const auto& name : group.list_set_children_name()) {
        auto set = group.retrieve_set(name);
        const auto index =
            read_number<std::int64_t>(set.retrieve_attribute(attribute::relative_set_index));
        sets.emplace_back(index.value_or(without_index), std::move(set));
    }
    std::stable_sort(sets.begin(), sets.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<strata::data_set> ordered;
    ordered.reserve(sets.size());
    for (auto& [index, set] : sets)
        ordered.push_back(std::move(set));
    return ordered;
}

std::size_t known_analog_columns(const strata::data_group& root) {
    return known_columns(root).size();
}

std::vector<strata::data_set> pair_analogs(const strata::data_group& root,
                                           std::string_view analogs_path) {
    free_sets sets(root.exists_group(analogs_path)
                       ? sets_by_index(root.retrieve_group(analogs_path))
                       : std::vector<strata::data_set>());
    auto paired = pair(known_columns(root), set_names(root), sets);
    const auto others = sets.rest();
    paired.insert(paired.end(), others.begin(), others.end());
    return paired;
}

} // namespace schema
