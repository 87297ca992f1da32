// Number text and its reading, under a locale that writes a comma when there is one.
#include "zuvsys/bestint.h"
#include "zuvsys/numparse.h"
#include "zuvsys/numtext.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace norva {
namespace {

struct comma_locale {
    comma_locale() {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"})
            if (std::setlocale(LC_NUMERIC, name)) return;
    }
    ~comma_locale() { std::setlocale(LC_NUMERIC, "C"); }
};

TEST(numtext, compact_doubles) {
    comma_locale locale;
    struct {
        double value;
        const char* text;
    } cases[] = {
        {0.0, "0.0"},
        {-0.0, "0.0"},
        {2.0, "2.0"},
        {-2.5, "-2.5"},
        {1e6, "1000000.0"},
        {1000001.0, "1.000001e+06"},
        {1e-6, "0.000001"},
        {2e-7, "2.0e-07"},
        {1e300, "1.0e+300"},
        {100.0, "100.0"}, // zeros ahead of the point stay
        {1.0 / 3.0, "0.333333333333"},
        {-123456.75, "-123456.75"},
        {std::numeric_limits<double>::infinity(), "inf"},
    };
    for (const auto& c : cases) EXPECT_STREQ(c_sfmtd(c.value), c.text);
    EXPECT_STREQ(c_sfmtf(0.1), "0.1");
    EXPECT_STREQ(c_sfmtf(1e9), "1.0e+09");
    EXPECT_STREQ(c_sfmtf(16777217.0), "1.677722e+07");
    EXPECT_STREQ(c_sfmtf(2e-6), "0.0"); // five decimals
    EXPECT_STREQ(c_sfmtf(1e-60), "0.0");
    EXPECT_STREQ(c_sfmti(std::numeric_limits<int>::min()), "-2147483648");
}

TEST(numtext, ten_results_live_side_by_side) {
    const char* first = c_sfmtd(1.0);
    for (int i = 2; i <= 10; i++) c_sfmtd(i);
    EXPECT_STREQ(first, "1.0");
    c_sfmtd(11.0);
    EXPECT_STREQ(first, "11.0");
}

TEST(numparse, numbers_at_the_start_of_a_text) {
    comma_locale locale;
    struct {
        const char* text;
        std::size_t taken;
        double value;
    } cases[] = {
        {"1.5", 3, 1.5},
        {"  -2e3xyz", 6, -2000.0},
        {"+.5,7", 3, 0.5},
        {"5.", 2, 5.0},
        {"1e", 1, 1.0},
        {"1,5", 1, 1.0},
        {"", 0, -9.0},
        {"-", 0, -9.0},
        {".", 0, -9.0},
        {"nan", 0, -9.0},
        {"inf", 0, -9.0},
        {"e5", 0, -9.0},
        {"0x10", 1, 0.0},
        {"--1", 0, -9.0},
        {"\t\n 7\r\n", 4, 7.0},
        {"1e-400", 6, 0.0},
        {"-1e400", 6, -INFINITY},
        {"1e99999999999999999999", 22, INFINITY},
    };
    for (const auto& c : cases) {
        double value = -9.0;
        EXPECT_EQ(prefix_double(c.text, value), c.taken) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
    }
    double value = 1.0;
    std::string small = "0." + std::string(400, '0') + "1", large = std::string(400, '9') + ".5";
    EXPECT_EQ(prefix_double(small, value), small.size());
    EXPECT_EQ(value, 0.0);
    EXPECT_EQ(prefix_double(large, value), large.size());
    EXPECT_EQ(value, INFINITY);
}

TEST(numparse, whole_texts_and_integers) {
    EXPECT_EQ(whole_double(" 12.5 "), 12.5);
    EXPECT_FALSE(whole_double("12.5 m"));
    EXPECT_FALSE(whole_double(""));
    EXPECT_EQ(whole_int("-7"), -7);
    EXPECT_FALSE(whole_int("7.5"));
    EXPECT_EQ(to_int("42abc"), 42);
    EXPECT_EQ(to_int("99999999999"), std::numeric_limits<int>::max());
    EXPECT_EQ(to_int("-99999999999999999999999"), std::numeric_limits<int>::min());
    EXPECT_EQ(to_double("none"), 0.0);
}

TEST(numparse, formats_agree_with_the_c_library) {
    std::mt19937_64 bits(1);
    char expected[512];
    for (int i = 0; i < 2000; i++) {
        double v = std::bit_cast<double>(bits());
        if (!std::isfinite(v)) continue;
        int digits = i % 18;
        std::snprintf(expected, sizeof expected, "%.*e", digits, v);
        ASSERT_EQ(format_exponent(v, digits), expected);
        std::snprintf(expected, sizeof expected, "%.*g", digits, v);
        ASSERT_EQ(format_general(v, digits), expected);
        std::snprintf(expected, sizeof expected, "%.*f", digits, v);
        ASSERT_EQ(format_fixed(v, digits), expected);
        ASSERT_EQ(to_double(format_exact(v)), v);
    }
    EXPECT_EQ(format_fixed(-0.5, -3), "-0"); // as for no decimals
    EXPECT_EQ(format_fixed(1e308, 2000).size(), 309U + 1U + 1100U);
}

TEST(bestint, halves_go_away_from_zero) {
    struct {
        double x;
        int nearest;
    } cases[] = {{2.5, 3},
                 {-2.5, -3},
                 {0.49, 0},
                 {-0.5, -1},
                 {1e12, std::numeric_limits<int>::max()},
                 {-1e12, std::numeric_limits<int>::min()},
                 {NAN, 0}};
    for (const auto& c : cases) EXPECT_EQ(bestint(c.x), c.nearest) << c.x;
}

} // namespace
} // namespace norva
