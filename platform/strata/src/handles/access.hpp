#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>
#include <strata/data_selection.hpp>
#include <strata/data_set.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "platform/strata/src/tree/group_node.hpp"

namespace strata::detail {

/// The one place that looks behind the public handles.
struct access {
    static data_group handle(counted_ptr<group_node> node) noexcept {
        data_group group;
        group.node_ = std::move(node);
        return group;
    }
    static data_set handle(counted_ptr<set_entry> entry) noexcept {
        data_set set;
        set.entry_ = std::move(entry);
        return set;
    }
    static data_attribute handle(counted_ptr<attribute_node> node) noexcept {
        data_attribute attribute;
        attribute.node_ = std::move(node);
        return attribute;
    }
    /// The box, which is nothing yet, is for the caller to fill in place: copying it costs as much
    /// as a small read.
    static element_box& box_of_new(data_selection& selection,
                                   counted_ptr<set_content> content) noexcept {
        selection.content_ = std::move(content);
        return selection.box_;
    }

    static group_node* node(const data_group& group) noexcept { return group.node_.get(); }
    static set_entry* entry(const data_set& set) noexcept { return set.entry_.get(); }
    static attribute_node* node(const data_attribute& attribute) noexcept {
        return attribute.node_.get();
    }
};

} // namespace strata::detail
