#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <strata/access/data_type_of.hpp>
#include <strata/data_attribute.hpp>
#include <strata/data_converter.hpp>
#include <strata/data_group.hpp>
#include <strata/data_selection.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>
#include <strata/store_error.hpp>

namespace strata_test {

using strata::data_shape;
using strata::data_type;

/// Element type for a C++ type; `char` stands for truth values, since std::vector<bool> is no
/// array.
template <typename Value> constexpr data_type type_of() {
    return strata::data_type_of<std::conditional_t<std::is_same_v<Value, char>, bool, Value>>;
}

inline data_shape scalar() { return data_shape{false}; }

inline data_shape shape(std::vector<std::int64_t> dimensions) {
    return {std::move(dimensions), false};
}

/// All values of an attribute or a selection as `Value`.
template <typename Value, typename Source> std::vector<Value> values(const Source& source) {
    std::vector<Value> read(source.shape().element_count());
    EXPECT_TRUE(source.read_value(read.data(), type_of<Value>()));
    return read;
}

template <typename Source> std::vector<std::string> texts(const Source& source) {
    std::vector<const char*> read(source.shape().element_count());
    EXPECT_TRUE(source.read_value(read.data(), data_type::string));
    std::vector<std::string> copies(read.begin(), read.end());
    strata::data_converter_string_clean_buffer(source.shape(), read.data());
    return copies;
}

template <typename Value, typename Target>
void give(Target target, const std::vector<Value>& given) {
    ASSERT_EQ(given.size(), target.shape().element_count());
    EXPECT_TRUE(target.write_value(given.data(), type_of<Value>()));
}

template <typename Target> void give_texts(Target target, const std::vector<const char*>& given) {
    ASSERT_EQ(given.size(), target.shape().element_count());
    EXPECT_TRUE(target.write_value(given.data(), data_type::string));
}

/// A selection of the whole set.
inline strata::data_selection whole(const strata::data_set& set) {
    return set.select(set.shape(false), false);
}

/// A selection by (offset, extent) pairs.
inline strata::data_selection part(const strata::data_set& set,
                                   const std::vector<std::uint64_t>& pairs) {
    return set.select(pairs.data(), pairs.size(), true);
}

inline void resize(strata::data_set set, const std::vector<std::uint64_t>& dimensions) {
    set.resize(dimensions.data(), dimensions.size());
}

/// 0, 1, 2, ...
template <typename Value> std::vector<Value> counting(std::size_t count, Value first = Value{}) {
    std::vector<Value> numbers(count);
    for (std::size_t i = 0; i < count; ++i)
        numbers[i] = static_cast<Value>(first + static_cast<Value>(i));
    return numbers;
}

/// A set with the values 0, 1, 2, ... as doubles.
inline strata::data_set counting_set(strata::data_group group, const std::string& name,
                                     const std::vector<std::int64_t>& dimensions) {
    auto set = group.create_set(name, shape(dimensions), data_type::float64);
    give(whole(set), counting<double>(whole(set).shape().element_count()));
    return set;
}

/// The message of the store_error that `call` throws.
template <typename Call> std::string refusal(Call call) {
    try {
        call();
    } catch (const strata::store_error& error) {
        return error.what();
    }
    return "nothing was refused";
}

} // namespace strata_test
