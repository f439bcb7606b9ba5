#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <strata/data_store.hpp>
#include <strata/export.hpp>

namespace strata {

// A store as bytes, for other processes and for keeping: groups, sets and attributes in their
// order, with every bit of their numbers, held as compactly as the store holds them. Sets of
// several names stay one set, and what shares elements shares them in the store that is read.

/// Bytes of the image of `store`.
[[nodiscard]] STRATA_EXPORT std::uint64_t image_size(const data_store& store);

/// Fills `image`, which has image_size(store) bytes.
STRATA_EXPORT void write_image(const data_store& store, std::span<std::byte> image);

/// The store of an image. Throws store_error for bytes that are none: foreign ones, damaged ones,
/// those of another version or of a machine with another order of bytes; std::bad_alloc.
[[nodiscard]] STRATA_EXPORT data_store read_image(std::span<const std::byte> image);

} // namespace strata
