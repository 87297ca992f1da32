// The window of data in its two forms, and which windows are accepted.
#include "app/window_values.h"
#include "state/run.h"
#include "state/user.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace norva {
namespace {

class window_values : public testing::Test {
protected:
    // 100 frequencies from 1000 MHz in steps of 2, 50 records from 10 s in steps of 0.5.
    void SetUp() override {
        reset_run_state();
        gp.f0 = 1000;
        gp.df = 2;
        gp.nf = 100;
        gp.t0 = 10;
        gp.wfri = 0.5f;
        gp.nrec = 50;
    }

    static window_verdict take(double a, double b, double c, double d, int style) {
        const window_field fields[4] = {{.typed = a}, {.typed = b}, {.typed = c}, {.typed = d}};
        return take_window(fields, style, user_window());
    }

    static void expect_samples(int nf0, int nf, int nt0, int nt) {
        EXPECT_EQ(user.nf0, nf0);
        EXPECT_EQ(user.nf, nf);
        EXPECT_EQ(user.nt0, nt0);
        EXPECT_EQ(user.nt, nt);
    }
};

TEST_F(window_values, units_and_samples_follow_each_other) {
    EXPECT_EQ(take(1020, 40, 15, 10, 0), window_verdict::ok);
    expect_samples(11, 20, 11, 20);
    EXPECT_FLOAT_EQ(user.f0, 1020);
    EXPECT_FLOAT_EQ(user.dwell, 10);

    EXPECT_EQ(take(3, 7, 5, 9, 1), window_verdict::ok);
    EXPECT_FLOAT_EQ(user.f0, 1004);
    EXPECT_FLOAT_EQ(user.bw, 14);
    EXPECT_FLOAT_EQ(user.t0, 12);
    EXPECT_FLOAT_EQ(user.dwell, 4.5);

    // Between two samples: the nearest, halves away from zero.
    EXPECT_EQ(take(1004.9, 41, 10.25, 10.2, 0), window_verdict::ok);
    expect_samples(3, 21, 2, 20);
}

TEST_F(window_values, descending_frequencies) {
    gp.df = -2;
    EXPECT_EQ(take(11, 20, 1, 50, 1), window_verdict::ok);
    EXPECT_FLOAT_EQ(user.f0, 980);
    EXPECT_FLOAT_EQ(user.bw, -40);
    // Typed in units the start turns the other way, and is held at the first sample.
    EXPECT_EQ(take(980, -40, 10, 25, 0), window_verdict::ok);
    expect_samples(1, 20, 1, 50);
}

TEST_F(window_values, untouched_fields_stand_for_their_samples) {
    // Seconds this late have no millisecond left in six decimals of a float; the records do not move.
    gp.t0 = 45000;
    gp.wfri = 0.001f;
    const window_field fields[4] = {{.typed = 1003, .untouched = true, .sample = 3},
                                    {.typed = 200, .untouched = true, .sample = 90},
                                    {.typed = 45000.008, .untouched = true, .sample = 10},
                                    {.typed = 0.020}};
    EXPECT_EQ(take_window(fields, 0, user_window()), window_verdict::ok);
    expect_samples(3, 90, 10, 20);
}

TEST_F(window_values, held_inside_the_file) {
    EXPECT_EQ(take(-3, 1000, 49, 1000, 1), window_verdict::ok);
    expect_samples(1, 100, 49, 2);
    EXPECT_EQ(take(1e30, -1e30, std::nan(""), std::numeric_limits<double>::infinity(), 1),
              window_verdict::ok);
    expect_samples(100, 1, 1, 50);
    EXPECT_EQ(take(1e38, 1e38, -1e38, 1e38, 0), window_verdict::ok);
    expect_samples(100, 1, 1, 50);
}

TEST_F(window_values, one_point_and_one_line) {
    EXPECT_EQ(take(5, 1, 5, 1, 1), window_verdict::one_point);
    EXPECT_EQ(take(5, 1, 5, 9, 1), window_verdict::ok);
    EXPECT_EQ(stsf, 1);
    EXPECT_EQ(nfreq, 1);
    // No bandwidth at all becomes one sample, but counts as asked for: none.
    EXPECT_EQ(take(1000, 0, 10, 25, 0), window_verdict::ok);
    EXPECT_EQ(user.nf, 1);
    EXPECT_EQ(stsf, 0);
}

TEST_F(window_values, later_steps_only_narrow_the_window) {
    ASSERT_EQ(take(11, 20, 11, 20, 1), window_verdict::ok);
    eoj = user.count = 3;
    const struct {
        double typed[4];
        window_verdict verdict;
        int nf0, nf, nt0, nt;
    } cases[] = {
        {{12, 10, 13, 5}, window_verdict::ok, 12, 10, 13, 5},
        {{10, 10, 11, 20}, window_verdict::f0_outside, 11, 10, 11, 20},
        {{31, 10, 11, 20}, window_verdict::f0_outside, 11, 10, 11, 20},
        {{11, 20, 31, 20}, window_verdict::t0_outside, 11, 20, 11, 20},
        {{15, 20, 11, 20}, window_verdict::nf_outside, 15, 16, 11, 20},
        {{11, 20, 12, 20}, window_verdict::nt_outside, 11, 20, 12, 19},
        // Two faults: both are corrected, the later one is reported.
        {{9, 20, 12, 40}, window_verdict::nt_outside, 11, 20, 12, 19},
        {{9, 21, 12, 3}, window_verdict::nf_outside, 11, 20, 12, 3},
    };
    for (const auto& c : cases) {
        take(11, 20, 11, 20, 1);
        user.nf0 = 11, user.nf = 20, user.nt0 = 11, user.nt = 20;
        SCOPED_TRACE(testing::Message()
                     << c.typed[0] << " " << c.typed[1] << " " << c.typed[2] << " " << c.typed[3]);
        EXPECT_EQ(take(c.typed[0], c.typed[1], c.typed[2], c.typed[3], 1), c.verdict);
        expect_samples(c.nf0, c.nf, c.nt0, c.nt);
    }
}

TEST_F(window_values, position_0_with_one_line_is_free) {
    ASSERT_EQ(take(11, 20, 11, 20, 1), window_verdict::ok);
    eoj = 3;
    user.count = 0;
    EXPECT_EQ(take(1, 1, 1, 50, 1), window_verdict::ok);
    expect_samples(1, 1, 1, 50);
    user.nf0 = 11, user.nf = 20, user.nt0 = 11, user.nt = 20;
    EXPECT_EQ(take(1, 100, 1, 50, 1), window_verdict::nt_outside);
}

} // namespace
} // namespace norva
