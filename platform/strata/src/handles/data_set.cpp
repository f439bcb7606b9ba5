#include <strata/data_set.hpp>

#include "platform/strata/src/elements/dimensions.hpp"
#include "platform/strata/src/handles/access.hpp"
#include "platform/strata/src/tree/set_node.hpp"
#include "platform/strata/src/tree/store_failures.hpp"

namespace strata {

using detail::access;
using detail::counted_ptr;

namespace {

detail::set_content& content_of(const counted_ptr<detail::set_entry>& entry) {
    if (!entry)
        detail::throw_denotes_nothing("data set");
    return *entry->content();
}

} // namespace

data_set::data_set() noexcept = default;
data_set::data_set(const data_set&) noexcept = default;
data_set::data_set(data_set&&) noexcept = default;
data_set& data_set::operator=(const data_set&) noexcept = default;
data_set& data_set::operator=(data_set&&) noexcept = default;
data_set::~data_set() = default;

data_set::operator bool() const noexcept { return static_cast<bool>(entry_); }

std::string data_set::name() const { return entry_ ? std::string{entry_->name()} : std::string{}; }

data_type data_set::type() const noexcept {
    return entry_ ? entry_->content()->type() : data_type::invalid;
}

data_shape data_set::shape(bool) const {
    return entry_ ? entry_->content()->elements().extents().shape() : data_shape{};
}

data_selection data_set::select(const data_shape& shape, bool) const {
    data_selection selection;
    if (!entry_)
        return selection;
    const auto& extents = entry_->content()->elements().extents();
    const auto& asked = shape.dimensions();
    if (asked.size() != extents.rank())
        return selection;
    for (std::size_t i = 0; i < asked.size(); ++i) {
        if (asked[i] < 0 || static_cast<std::uint64_t>(asked[i]) != extents[i])
            return selection;
    }
    access::box_of_new(selection, entry_->content()) = extents.whole();
    return selection;
}

data_selection data_set::select(const std::uint64_t* coordinates, std::uint64_t count, bool) const {
    data_selection selection;
    if (!entry_ || (count != 0 && !coordinates))
        return selection;
    const auto& extents = entry_->content()->elements().extents();
    if (count != 2 * extents.rank())
        return selection;
    auto& box = access::box_of_new(selection, entry_->content());
    for (box.rank = 0; box.rank < extents.rank(); ++box.rank) {
        box.offset[box.rank] = coordinates[2 * box.rank];
        box.extent[box.rank] = coordinates[2 * box.rank + 1];
    }
    if (!extents.contain(box))
        selection = {};
    return selection;
}

void data_set::resize(const std::uint64_t* extents, std::uint64_t count) {
    content_of(entry_).resize(detail::dimensions{extents, count});
}

bool data_set::exists_attribute(std::string_view name) const noexcept {
    return entry_ && entry_->content()->attributes().find(name);
}

data_attribute data_set::retrieve_attribute(std::string_view name) const {
    return entry_ ? access::handle(counted_ptr{entry_->content()->attributes().find(name)})
                  : data_attribute{};
}

data_attribute data_set::create_attribute(std::string_view name, const data_shape& shape,
                                          data_type type) {
    return access::handle(content_of(entry_).attributes().create(name, shape, type));
}

void data_set::copy_attribute(const data_attribute& attribute) {
    const auto* source = access::node(attribute);
    if (!source)
        detail::throw_denotes_nothing("attribute");
    content_of(entry_).attributes().copy(*source);
}

void data_set::delete_attribute(std::string_view name) {
    content_of(entry_).attributes().remove(name);
}

std::vector<std::string> data_set::list_attributes_name() const {
    return content_of(entry_).attributes().names();
}

} // namespace strata
