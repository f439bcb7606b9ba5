#include <gtest/gtest.h>

#include "plugins/c3d/importer.hpp"
#include "tests/cpp/c3d/support/memory_device.hpp"
#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d_test::byte_vector;
using c3d_test::memory_device;
using c3d_test::trial;

bool accepts(byte_vector bytes) {
    memory_device device(std::move(bytes));
    return c3d::importer().accepts(device);
}

TEST(Sniffing, FileIsAcceptedByItsContent) {
    for (auto format :
         {c3d::number_format::intel, c3d::number_format::dec, c3d::number_format::mips}) {
        trial file;
        file.format = format;
        EXPECT_TRUE(accepts(file.bytes()));
    }
}

TEST(Sniffing, ZerosBeforeTheHeaderAreSkipped) {
    trial file;
    file.leading_zeros = 700;
    EXPECT_TRUE(accepts(file.bytes()));
}

TEST(Sniffing, ForeignFilesAreNotAccepted) {
    EXPECT_FALSE(accepts({}));
    EXPECT_FALSE(accepts(byte_vector(100000)));
    EXPECT_FALSE(accepts(c3d_test::characters("solid model\n")));
    EXPECT_FALSE(accepts(c3d_test::hex("02 51 00 00")));
    EXPECT_FALSE(accepts(c3d_test::characters("SPICE netlist of an amplifier")));
    byte_vector text(5000, std::byte{'x'});
    text[0] = std::byte{'S'};
    text[1] = std::byte{'P'};
    EXPECT_FALSE(accepts(text));
}

TEST(Sniffing, CutFileIsAcceptedSoThatItsErrorIsTold) {
    const auto whole = trial().bytes();
    EXPECT_TRUE(accepts(byte_vector(whole.begin(), whole.begin() + 100)));
    EXPECT_TRUE(accepts(byte_vector(whole.begin(), whole.begin() + 514)));
}

TEST(Sniffing, FileThatCannotBeReadIsNotAccepted) {
    memory_device device(trial().bytes());
    device.fail_at(0);
    EXPECT_FALSE(c3d::importer().accepts(device));
}

TEST(Sniffing, ProcessorByteThatIsNoneIsMadeUpForByTheHeader) {
    for (auto format :
         {c3d::number_format::intel, c3d::number_format::dec, c3d::number_format::mips}) {
        trial file;
        file.format = format;
        auto bytes = file.bytes();
        bytes[515] = std::byte{0};
        EXPECT_TRUE(accepts(bytes));
        const auto found = c3d_test::read(bytes);
        ASSERT_TRUE(found.status) << found.status.message(" ");
        EXPECT_EQ(found.row(c3d_test::points_set, 0, 0)[1], 4.0);
        EXPECT_TRUE(found.warns_about("byte 515: processor byte 84, 85 or 86 expected, found 0"));
    }
}

TEST(Sniffing, ProcessorByteWithout83IsUnderstood) {
    trial file;
    auto bytes = file.bytes();
    bytes[515] = std::byte{1};
    EXPECT_TRUE(c3d_test::read(bytes).status);
}

TEST(Sniffing, HeaderThatMakesNoSenseEitherIsAnError) {
    trial file;
    file.rate = 0.0F;
    auto bytes = file.bytes();
    bytes[515] = std::byte{99};
    EXPECT_FALSE(accepts(bytes));
    const auto found = c3d_test::read(bytes);
    EXPECT_EQ(found.status.message(""),
              "'trial.c3d': byte 515: processor byte 84 (Intel), 85 (DEC) or "
              "86 (MIPS) expected, found 99");
}

} // namespace
