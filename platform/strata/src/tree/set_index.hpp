#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <strata/detail/counted.hpp>

#include "platform/strata/src/tree/key_watch.hpp"
#include "platform/strata/src/tree/named_list.hpp"
#include "platform/strata/src/tree/set_node.hpp"

namespace strata::detail {

/// Finds the sets of a group by what an attribute of theirs says, in a time that does not grow with
/// their number. Made when somebody first asks.
///
/// It is never older than the store. Sets that were added are taken in before each search; so are
/// those again whose attributes changed, which tell it (key_watch). Places that it has for former
/// values do no harm: what is found is compared once more before it is given.
class set_index {
  public:
    using sets = named_list<set_entry>;
    /// Whether an attribute that is no single value of the asked kind is equal nevertheless.
    using odd_match = std::function<bool(const counted_ptr<attribute_node>&)>;

    set_index() noexcept = default;
    set_index(const set_index&) = delete;
    set_index& operator=(const set_index&) = delete;
    ~set_index() { clear(); }

    /// The first set of `group` whose attribute `name` is this single text; or one before it whose
    /// attribute is anything else that `matches`. Null without one. The group is the same at every
    /// call. Throws std::bad_alloc and what `matches` throws.
    [[nodiscard]] set_entry* find(const sets& group, std::string_view name, std::string_view text,
                                  const odd_match& matches);
    /// The same by a single number, read as int32.
    [[nodiscard]] set_entry* find(const sets& group, std::string_view name, std::int32_t number,
                                  const odd_match& matches);

    /// The single texts that the attribute `name` of the sets is, each once, in the order of the
    /// first sets that have them. Nothing when it is anything else for any set that has it.
    [[nodiscard]] std::optional<std::vector<std::string>> texts(const sets& group,
                                                                std::string_view name);

  private:
    friend class key_watch;

    enum class key_kind : std::uint8_t { text, number };
    using places = std::vector<std::size_t>; // of sets in the group's list, ascending

    struct column {
        std::string name; // of the attribute
        key_kind kind;
        std::unordered_map<std::string, places> by_key;
        places odd;              // where the attribute is something else
        std::size_t entered = 0; // places, also those for former values
    };

    set_entry* find(const sets& group, std::string_view name, key_kind kind, const std::string& key,
                    const odd_match& matches);
    std::optional<std::vector<std::string>> true_texts(const sets& group, std::string_view name);
    void bring_up_to_date(const sets& group);
    void take_in(const sets& group, std::size_t place);
    void look_again(const sets& group);
    column& column_for(const sets& group, std::string_view name, key_kind kind);
    void enter(column& into, const set_entry& entry, std::size_t place);
    [[nodiscard]] bool has_column(std::string_view name) const noexcept;
    void clear() noexcept;

    std::vector<counted_ptr<key_watch>> watches_; // by place; null where no set is
    std::vector<column> columns_;
    std::size_t layout_ = 0;      // of the group's list, for which the places are true
    bool shares_content_ = false; // two sets of the group are one, which only one can watch
    key_watch* noted_ = nullptr;  // the first of a chain
};

} // namespace strata::detail
