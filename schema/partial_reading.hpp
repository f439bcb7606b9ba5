#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <strata/data_group.hpp>

namespace schema {

// Reading a part of a file. Kinds are called by the groups of their channels: "Markers", "Angles",
// "Forces", "Moments", "Powers", "Analogs", and "Rotations". The root says which ones are wanted
// while an importer reads, and from then on which channels of the file nobody wanted: these are no
// channels of the acquisition, and no file can be written that would lack them.

/// Asks an importer, which is given `root`, for the channels of these kinds alone. One that does
/// not look reads all of them.
void ask_for_kinds(strata::data_group root, const std::vector<std::string>& kinds);

/// Takes that back, once the importer is done.
void forget_asked_kinds(strata::data_group root);

/// What an importer is asked for.
class wanted_kinds {
  public:
    /// All of them.
    wanted_kinds() = default;

    /// What `root` asks for: all of them unless ask_for_kinds was called.
    explicit wanted_kinds(const strata::data_group& root);

    [[nodiscard]] bool contain(std::string_view kind) const;

  private:
    std::optional<std::vector<std::string>> kinds_;
};

/// Channels of a file that nobody wanted, in the order of the file; the lists are equally long.
struct unread_channels {
    std::vector<std::string> kinds;
    std::vector<std::string> labels; ///< of one without a label the name that its set would have
    std::vector<std::string> units;  ///< empty for rotations

    void add(std::string_view kind, const std::string& label, const std::string& unit);
    [[nodiscard]] bool contain(std::string_view kind) const;
    [[nodiscard]] std::vector<std::string> labels_of(std::string_view kind) const;
};

/// Keeps the channels of its own file on `root`, behind those that it has.
void keep_unread(strata::data_group root, const unread_channels& channels);

/// Keeps those of another file, of which `root` has got channels. What the parameters say of
/// channels, as those of force platforms do, never means them.
void keep_unread_of_other(strata::data_group root, const unread_channels& channels);

/// Those of its own file that `root` keeps; none of what was read as a whole.
[[nodiscard]] unread_channels unread_of_file(const strata::data_group& root);

/// All that `root` keeps, those of its own file first.
[[nodiscard]] unread_channels unread_of(const strata::data_group& root);

/// How many there are of each kind: "8 angles and 20 analog channels"; empty where there are none.
[[nodiscard]] std::string counts_of(const unread_channels& channels);

} // namespace schema
