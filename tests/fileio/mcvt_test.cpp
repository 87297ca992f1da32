// Conversions between machines, against numbers built from the definition of each format.
#include "fileio/mcvt.h"
#include "machine_bytes.h"

#include <gtest/gtest.h>

#include <string>

namespace norva::test {
namespace {

using convert = void (*)(void*, std::size_t);

std::string converted(std::string bytes, int source, int target, convert routine, std::size_t n = 1) {
    EXPECT_EQ(setmcvt(source, target), 1);
    routine(bytes.data(), n);
    return bytes;
}

std::string hex(const std::string& bytes) {
    std::string out;
    for (unsigned char b : bytes) out += "0123456789abcdef"[b >> 4], out += "0123456789abcdef"[b & 15];
    return out;
}

TEST(mcvt, values_keep_their_meaning_between_all_machines) {
    // Within the range and precision of every format. F and single IEEE have 24 bits, D and double at
    // least 53.
    const float floats[] = {0.0F, 1.0F, -1.0F, 0.5F, 3.14159274F, -6.25e-10F, 1.5e37F, 2.5e-38F, 16777215.0F};
    const double doubles[] = {0.0, 1.0, -2.0, 0.1, -12345.678901234567, 1.25e38, 5e-38, 0x1.fffffffffffffp0};
    for (int source : all_machines)
        for (int target : all_machines) {
            SCOPED_TRACE(std::to_string(source) + " to " + std::to_string(target));
            for (float v : floats)
                EXPECT_EQ(hex(converted(float_bytes(source, v), source, target, mcvt_f4)),
                          hex(float_bytes(target, v)))
                    << v;
            for (double v : doubles)
                EXPECT_EQ(hex(converted(double_bytes(source, v), source, target, mcvt_f8)),
                          hex(double_bytes(target, v)))
                    << v;
            auto integers_agree = [&]<class T>(T v, convert routine) {
                EXPECT_EQ(converted(integer_bytes(source, v), source, target, routine),
                          integer_bytes(target, v));
            };
            integers_agree(std::int16_t{-258}, mcvt_i2);
            integers_agree(std::int32_t{0x01020304}, mcvt_i4);
            integers_agree(std::int64_t{-0x0102030405060708}, mcvt_i8);
        }
}

TEST(mcvt, runs_convert_every_value) {
    std::string run, expected;
    for (int i = 0; i < 5; i++) {
        run += float_bytes(MACHINE_VAX, static_cast<float>(i) - 2.5F);
        expected += float_bytes(MACHINE_SUN, static_cast<float>(i) - 2.5F);
    }
    EXPECT_EQ(converted(run, MACHINE_VAX, MACHINE_SUN, mcvt_r4, 5), expected);
    EXPECT_EQ(converted("text", MACHINE_VAX, MACHINE_SUN, mcvt_c, 4), "text");
}

TEST(mcvt, ends_of_the_vax_range) {
    struct {
        const char* what;
        double value;
        int source, target;
        bool is_double;
        std::string expected;
    } cases[] = {
        {"beyond F", 3e38, MACHINE_SUN, MACHINE_VAX, false, "ff7fffff"},
        {"beyond F, negative", -3e38, MACHINE_THIS, MACHINE_ALPHA_VMS, false, "ffffffff"},
        {"not a number", NAN, MACHINE_THIS, MACHINE_VAX, false, "ff7fffff"},
        {"infinity", HUGE_VAL, MACHINE_THIS, MACHINE_VAX, false, "ff7fffff"},
        {"denormal", 1e-40, MACHINE_THIS, MACHINE_VAX, false, "00000000"},
        {"beyond D", 1e300, MACHINE_SUN, MACHINE_VAX, true, "ff7fffffffffffff"},
        {"beyond D, negative", -1e300, MACHINE_THIS, MACHINE_VAX, true, "ffffffffffffffff"},
        {"below D", 1e-300, MACHINE_THIS, MACHINE_VAX, true, "0000000000000000"},
        {"G beyond D", 1e300, MACHINE_ALPHA_VMS, MACHINE_VAX, true, "ff7fffffffffffff"},
        {"G beyond D, negative", -1e300, MACHINE_ALPHA_VMS, MACHINE_VAX, true, "ffffffffffffffff"},
        {"G below D", 1e-300, MACHINE_ALPHA_VMS, MACHINE_VAX, true, "0000000000000000"},
    };
    for (const auto& c : cases) {
        std::string in = c.is_double ? double_bytes(c.source, c.value)
                                     : float_bytes(c.source, static_cast<float>(c.value));
        EXPECT_EQ(hex(converted(in, c.source, c.target, c.is_double ? mcvt_f8 : mcvt_f4)), c.expected)
            << c.what;
    }
}

// A VAX float whose exponent byte is 0x01 stays a number; with exponent byte 0 it is zero whatever the rest.
TEST(mcvt, smallest_vax_floats) {
    std::string smallest = {'\x40', '\x01', '\x34', '\x12'}; // as stored: low byte of the first word first
    std::string sun = converted(smallest, MACHINE_VAX, MACHINE_SUN, mcvt_f4);
    EXPECT_EQ(hex(sun), "00401234");
    std::string dirty = {'\x40', '\x00', '\x34', '\x12'};
    EXPECT_EQ(hex(converted(dirty, MACHINE_VAX, MACHINE_SUN, mcvt_f4)), "00000000");
    EXPECT_EQ(hex(converted(std::string(8, '\0'), MACHINE_VAX, MACHINE_SUN, mcvt_f8)), "0000000000000000");
}

TEST(mcvt, unknown_machines_leave_the_choice) {
    ASSERT_EQ(setmcvt(MACHINE_SUN, MACHINE_THIS), 1);
    for (int bad : {0, 6, -1, 255}) {
        EXPECT_EQ(setmcvt(bad, MACHINE_THIS), -1);
        EXPECT_EQ(setmcvt(MACHINE_THIS, bad), -1);
    }
    std::string bytes = integer_bytes(MACHINE_SUN, std::int32_t{77});
    mcvt_i4(bytes.data());
    EXPECT_EQ(bytes, integer_bytes(MACHINE_THIS, std::int32_t{77}));
}

} // namespace
} // namespace norva::test
