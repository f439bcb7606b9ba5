#include "platform/strata/src/tree/copy_tree.hpp"

#include <unordered_map>

namespace strata::detail {

namespace {

/// The copy of each content that was met, so that hard links lead to one copy.
using content_copies = std::unordered_map<const set_content*, counted_ptr<set_content>>;

counted_ptr<set_content> copy_of(const counted_ptr<set_content>& content, content_copies& copies) {
    auto& copy = copies[content.get()];
    if (!copy)
        copy = content->copy();
    return copy;
}

void copy_below(const group_node& from, group_node& to, content_copies& copies) {
    to.attributes() = from.attributes().copy();
    from.sets().for_each([&](const set_entry& entry) {
        to.sets().add(counted_ptr{new set_entry{entry.name(), copy_of(entry.content(), copies)}});
    });
    from.groups().for_each([&](const group_node& group) {
        const counted_ptr made{new group_node{group.name(), to.depth() + 1}};
        copy_below(group, *made, copies);
        to.groups().add(made);
    });
}

} // namespace

void copy_tree(const group_node& from, group_node& to) {
    content_copies copies;
    copy_below(from, to, copies);
}

} // namespace strata::detail
