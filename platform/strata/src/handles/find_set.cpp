#include <strata/access/find_set.hpp>

#include "platform/strata/src/handles/access.hpp"

namespace strata {

using detail::access;
using detail::counted_ptr;

namespace {

template <typename Key>
data_set find(const data_group& group, std::string_view attribute, Key key,
              const attribute_match& matches) {
    auto* node = access::node(group);
    if (!node)
        return {};
    auto* entry = node->index().find(node->sets(), attribute, key,
                                     [&](const counted_ptr<detail::attribute_node>& odd) {
                                         return matches(access::handle(odd));
                                     });
    return entry ? access::handle(counted_ptr{entry}) : data_set{};
}

} // namespace

data_set find_set(const data_group& group, std::string_view attribute, std::string_view text,
                  const attribute_match& matches) {
    return find(group, attribute, text, matches);
}

data_set find_set(const data_group& group, std::string_view attribute, std::int32_t number,
                  const attribute_match& matches) {
    return find(group, attribute, number, matches);
}

std::optional<std::vector<std::string>> different_texts(const data_group& group,
                                                        std::string_view attribute) {
    auto* node = access::node(group);
    return node ? node->index().texts(node->sets(), attribute) : std::nullopt;
}

} // namespace strata
