#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <string>

#include <gtest/gtest.h>

#include <anvil/io_memory.hpp>

#include "tests/cpp/anvil/support/has_reason.hpp"

namespace {

using anvil_test::has_reason;

using anvil::io_memory;

std::span<const std::byte> in_bytes(const std::string& text) {
    return std::as_bytes(std::span{text});
}

std::string read(io_memory& device, std::uint64_t offset, std::size_t count) {
    std::string text(count, '?');
    const auto result = device.read_at(offset, std::as_writable_bytes(std::span{text}));
    EXPECT_FALSE(result.error);
    text.resize(result.bytes);
    return text;
}

TEST(IoMemory, GivesBytesFromAnyPlaceAndFewerAtTheEnd) {
    const std::string content = "0123456789";
    io_memory device{in_bytes(content), "there"};
    EXPECT_TRUE(device.is_open());
    EXPECT_EQ(device.size(), 10U);
    EXPECT_EQ(device.name(), "there");
    EXPECT_EQ(read(device, 7, 2), "78");
    EXPECT_EQ(read(device, 8, 4), "89");
    EXPECT_EQ(read(device, 10, 4), "");
    EXPECT_EQ(read(device, std::numeric_limits<std::uint64_t>::max(), 4), "");
}

TEST(IoMemory, KeepsWhatIsWrittenInOrder) {
    const std::string content = "read";
    io_memory device{in_bytes(content)};
    EXPECT_EQ(device.write(in_bytes("wri")).bytes, 3U);
    EXPECT_EQ(device.write({}).bytes, 0U);
    EXPECT_EQ(device.write(in_bytes("tten")).bytes, 4U);
    EXPECT_FALSE(device.commit());
    EXPECT_FALSE(device.failure());
    const auto& written = device.written();
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(written.data()), written.size()),
              "written");
    EXPECT_EQ(read(device, 0, 10), "read");
}

TEST(IoMemory, WithoutMemoryIsAnErrorAndKeepsWhatItHas) {
    io_memory device;
    ASSERT_FALSE(device.write(in_bytes("kept")).error);
    static const std::byte one{};
    // As long as no memory is, and never read.
    const std::span endless{&one, std::numeric_limits<std::size_t>::max() / 2};
    const auto result = device.write(endless);
    EXPECT_TRUE(has_reason(result.error, std::errc::not_enough_memory));
    EXPECT_EQ(result.bytes, 0U);
    EXPECT_TRUE(has_reason(device.failure(), std::errc::not_enough_memory));
    EXPECT_EQ(device.written().size(), 4U);
}

} // namespace
