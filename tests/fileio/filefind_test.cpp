// Time search, against a walk from the first element.
#include "fileio/filefind.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace norva {
namespace {

std::vector<double> times;
int calls = 0;

int time_at(_zuvfile*, std::int64_t element, double& time) {
    calls++;
    if (element < 0 || element >= std::ssize(times)) return ZUV_SEEK_FAILED;
    time = times[static_cast<std::size_t>(element)];
    return ZUV_OK;
}

std::int64_t found(double t, std::int64_t n0, std::int64_t n1) {
    std::int64_t at = -99;
    EXPECT_EQ(filefind(nullptr, t, at, n0, n1, time_at), 1) << t;
    return at;
}

std::int64_t walked(double t, std::int64_t n0, std::int64_t n1) {
    while (n0 <= n1 && times[static_cast<std::size_t>(n0)] < t) n0++;
    return n0;
}

TEST(filefind, gives_the_first_element_at_or_past_a_time) {
    std::mt19937 random(3);
    std::exponential_distribution<double> gap(1.0);
    for (std::size_t n : {1U, 2U, 3U, 10U, 100U}) {
        for (int kind = 0; kind < 3; kind++) { // even steps, random gaps, a jump in the middle
            times.assign(n, 0.0);
            for (std::size_t i = 1; i < n; i++)
                times[i] = times[i - 1] + (kind == 0    ? 0.25
                                           : kind == 1  ? gap(random) + 1e-9
                                           : i == n / 2 ? 1e6
                                                        : 1e-3);
            auto last = static_cast<std::int64_t>(n) - 1;
            std::vector<double> wanted = {-1.0, times.back() + 1.0, times.back() / 2};
            for (double t : times)
                for (double d : {-1e-10, 0.0, 1e-10}) wanted.push_back(t + d);
            for (double t : wanted) {
                ASSERT_EQ(found(t, 0, last), walked(t, 0, last)) << n << " " << kind << " " << t;
                if (n <= 3) continue;
                ASSERT_EQ(found(t, 1, last - 1), walked(t, 1, last - 1)) << n << " " << kind << " " << t;
            }
        }
    }
}

TEST(filefind, interpolation_needs_few_reads) {
    times.resize(1'000'000);
    for (std::size_t i = 0; i < times.size(); i++)
        times[i] = static_cast<double>(i) * 0.01 + (i % 7 ? 0.002 : 0.0);
    calls = 0;
    EXPECT_EQ(found(4321.0, 0, 999'999), 432'100);
    EXPECT_LT(calls, 20);
}

TEST(filefind, equal_times_and_times_that_fall) {
    std::int64_t at = 0;
    times = {1.0, 1.0, 1.0, 1.0};
    EXPECT_EQ(found(1.0, 0, 3), 0);
    EXPECT_EQ(found(2.0, 0, 3), 4);
    times = {1.0, 2.0, 2.0, 2.0, 3.0};
    EXPECT_GE(times[static_cast<std::size_t>(found(2.0, 0, 4))], 2.0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& wild : {std::vector<double>{0, 9, 1, 8, 2, 7, 10},
                             {0, -1, 5, -1e300, 1e300, 3, 10},
                             {0, nan, nan, 5, nan, 10},
                             {nan, nan, nan},
                             {0, INFINITY},
                             {-INFINITY, 0, 10}}) {
        times = wild;
        for (double t : {-1.0, 0.5, 3.0, 9.5, 11.0, nan, HUGE_VAL, -HUGE_VAL}) {
            int status = filefind(nullptr, t, at, 0, std::ssize(times) - 1, time_at); // ends, inside the file
            EXPECT_TRUE(status != 1 || (at >= 0 && at <= std::ssize(times))) << at;
        }
    }
    EXPECT_EQ(filefind(nullptr, 5.0, at, 0, 99, time_at), ZUV_SEEK_FAILED);
}

} // namespace
} // namespace norva
