#include <strata/access/store_image.hpp>

#include <cstring>
#include <string>

#include <strata/store_error.hpp>

#include "platform/strata/src/handles/access.hpp"
#include "platform/strata/src/image/image_format.hpp"
#include "platform/strata/src/image/image_reader.hpp"
#include "platform/strata/src/image/image_writer.hpp"

namespace strata {

using detail::access;
using detail::image_head;

std::uint64_t image_size(const data_store& store) {
    detail::image_writer counter;
    counter.put_group(*access::node(store.root()));
    return sizeof(image_head) + counter.size();
}

void write_image(const data_store& store, std::span<std::byte> image) {
    const auto tree = image.subspan(sizeof(image_head));
    detail::image_writer writer{tree};
    writer.put_group(*access::node(store.root()));
    image_head head;
    head.size = tree.size();
    head.digest = detail::digest_of(tree);
    std::memcpy(image.data(), &head, sizeof head);
}

data_store read_image(std::span<const std::byte> image) {
    image_head head;
    if (image.size() < sizeof head)
        throw store_error{"These bytes are no image of a store"};
    std::memcpy(&head, image.data(), sizeof head);
    if (head.mark != detail::image_mark)
        throw store_error{"These bytes are no image of a store"};
    if (head.order != detail::order_mark)
        throw store_error{"The image was made by a machine with another order of bytes"};
    if (head.version != detail::image_version) {
        throw store_error{"The image has version " + std::to_string(head.version) + ", not " +
                          std::to_string(detail::image_version)};
    }
    const auto tree = image.subspan(sizeof head);
    if (head.size != tree.size() || head.digest != detail::digest_of(tree))
        throw store_error{
            "The image of the store is damaged: its bytes are not those it was made of"};
    data_store store;
    detail::image_reader{tree}.read_tree(*access::node(store.root()));
    return store;
}

} // namespace strata
