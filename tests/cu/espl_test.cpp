// The evaluated spline in memory: values, statuses, and splines made from others against their closed form.
#include "splines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>

namespace norva::test {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// 1 + 2(t-0) on 0..1, 5 - (t-1) + 3(t-1)^2 on 1..3, 7 from 3 on.
espl_ptr three_pieces() {
    return spline(3, {{0, {1, 2, 0}}, {1, {5, -1, 3}}, {3, {7, 0, 0}}});
}

TEST(espl, value_and_derivatives_at_any_time) {
    const espl_ptr e = three_pieces();
    const struct {
        double t, value, slope, curvature;
    } cases[] = {
        {-2, -3, 2, 0},         {0, 1, 2, 0}, {0.5, 2, 2, 0},    {1, 5, -1, 6}, // the piece that begins there
        {2, 7, 5, 6},           {3, 7, 0, 0}, {9, 7, 0, 0},      {2.5, 10.25, 8, 6},
        {-1e300, -2e300, 2, 0}, {0, 1, 2, 0}, {1.5, 5.25, 2, 6}, {0.25, 1.5, 2, 0},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(espl(e.get(), c.t, 0), c.value) << c.t;
        EXPECT_EQ(espl_error(), 1);
        EXPECT_DOUBLE_EQ(espl(e.get(), c.t, 1), c.slope) << c.t;
        EXPECT_DOUBLE_EQ(espl(e.get(), c.t, 2), c.curvature) << c.t;
        EXPECT_EQ(espl(e.get(), c.t, 3), 0);
        EXPECT_EQ(espl_error(), 1);
    }
    double t0 = 0, t1 = 0;
    EXPECT_EQ(espl_bound(e.get(), t0, t1), 1);
    EXPECT_EQ(t0, 0);
    EXPECT_EQ(t1, 3);
}

// In order, backwards and to and fro: the pieces in hand never show.
TEST(espl, any_order_of_times_gives_the_same) {
    std::vector<std::pair<double, std::vector<double>>> pieces;
    for (int i = 0; i < 50; i++) pieces.push_back({i * 0.5, {1.0 * i}});
    pieces[20].first = pieces[21].first; // a piece of no length is never used
    const espl_ptr e = spline(1, pieces);
    auto piece_at = [&](double t) { // the last one that begins at or ahead of t
        double value = 0;
        for (const auto& [time, coe] : pieces)
            if (time <= t) value = coe[0];
        return value;
    };
    for (int i = -10; i < 600; i++) {
        const double forward = 0.05 * i, backward = 26 - forward, wild = std::fmod(i * 7.313, 26.0);
        for (double t : {forward, backward, wild}) ASSERT_EQ(espl(e.get(), t, 0), piece_at(t)) << t;
    }
}

TEST(espl, bad_arguments_give_a_status) {
    const espl_ptr e = three_pieces();
    const espl_ptr none = espl_init_for_memory(0, 2);
    ASSERT_TRUE(none);
    EXPECT_EQ(espl_error(), 1);
    const espl_ptr constant = spline(1, {{0, {1}}, {1, {1}}});
    const espl_ptr high = espl_init_for_memory(2, ESPL_MAX_NCOE);
    _brkpoint short_brk{1, 0, 0, {1}};
    const std::function<void()> calls[] = {
        [&] { EXPECT_EQ(espl(e.get(), 1, -1), 0); },
        [&] { EXPECT_EQ(espl(e.get(), nan, 0), 0); },
        [&] { EXPECT_EQ(espl(nullptr, 1, 0), 0); },
        [&] { EXPECT_EQ(espl(none.get(), 1, 0), 0); },
        [&] { EXPECT_FALSE(espl_init_for_memory(-1, 2)); },
        [&] { EXPECT_FALSE(espl_init_for_memory(2, 0)); },
        [&] { EXPECT_FALSE(espl_init_for_memory(2, ESPL_MAX_NCOE + 1)); },
        [&] { EXPECT_FALSE(espl_init_old(2, {short_brk})); },
        [&] { EXPECT_FALSE(espl_copy(nullptr)); },
        [&] { EXPECT_EQ(espl_rehash(nullptr), -13); },
        [&] { EXPECT_EQ(espl_rehash(none.get()), -13); },
        [&] { EXPECT_FALSE(espl_mult(nullptr, 2)); },
        [&] { EXPECT_FALSE(espl_plus(nullptr, 2)); },
        [&] { EXPECT_FALSE(espl_integrate(nullptr, 2)); },
        [&] { EXPECT_FALSE(espl_integrate(high.get(), 2)); },
        [&] { EXPECT_FALSE(espl_diff(nullptr)); },
        [&] { EXPECT_FALSE(espl_diff(constant.get())); },
        [&] { EXPECT_FALSE(espl_add(e.get(), nullptr)); },
        [&] { EXPECT_FALSE(espl_mergebrks(nullptr, e.get(), 0, 1)); },
        [&] { EXPECT_FALSE(espl_mergebrks(e.get(), constant.get(), 0.5, 1.5)); }, // one breakpoint
        [&] { EXPECT_FALSE(espl_mergebrks(e.get(), none.get(), 5, 6)); },
        [&] { EXPECT_TRUE(espl_plttimes(nullptr, 1).empty()); },
        [&] { EXPECT_TRUE(espl_plttimes(none.get(), 1).empty()); },
        [&] { EXPECT_TRUE(espl_plttimes(e.get(), 0).empty()); },
        [&] { EXPECT_TRUE(espl_plttimes(e.get(), -1).empty()); },
        [&] { EXPECT_TRUE(espl_plttimes(e.get(), std::numeric_limits<int>::max()).empty()); },
        [&] { EXPECT_EQ(espl_write(nullptr, "x", "", "", "", "", 0), -13); },
    };
    int n = 0;
    for (const auto& call : calls) {
        espl(e.get(), 0, 0);
        ASSERT_EQ(espl_error(), 1);
        call();
        EXPECT_EQ(espl_error(), -13) << n++;
    }
    espl_free(nullptr);
    // Breakpoints moved behind the spline's back, so that its bounds hold more than they do.
    e->brks[1].time = 0.2;
    e->brks[2].time = 0.5;
    EXPECT_DEATH(espl(e.get(), 1, 0), "Internal problem in espl.");
}

TEST(espl, high_orders_have_finite_multipliers) {
    const espl_ptr e = espl_init_for_memory(2, ESPL_MAX_NCOE);
    e->brks[0].coe[ESPL_MAX_NCOE - 1] = std::exp(-std::lgamma(ESPL_MAX_NCOE)); // 1/169!
    e->brks[1].time = 1;
    ASSERT_EQ(espl_rehash(e.get()), 1);
    EXPECT_NEAR(espl(e.get(), 0.5, ESPL_MAX_NCOE - 1), 1, 1e-10);
    EXPECT_NEAR(espl(e.get(), 0.5, ESPL_MAX_NCOE - 2), 0.5, 1e-10);
    const espl_ptr low = three_pieces(); // the table stays right for a lower order
    EXPECT_EQ(espl(low.get(), 2, 2), 6);
}

TEST(espl, rehash_sees_changed_breakpoints) {
    const espl_ptr e = three_pieces(), copy = espl_copy(e.get());
    EXPECT_EQ(espl(e.get(), 0.5, 0), 2);
    e->brks[0].coe[0] = 4;
    e->brks.push_back({4, 0, 0, {9}}); // too few coefficients: the others are 0
    ASSERT_EQ(espl_rehash(e.get()), 1);
    EXPECT_EQ(e->nbrks, 4);
    EXPECT_EQ(e->t1, 4);
    EXPECT_EQ(espl(e.get(), 0.5, 0), 5);
    EXPECT_EQ(espl(e.get(), 5, 0), 9);
    EXPECT_EQ(espl(copy.get(), 0.5, 0), 2); // a copy shares nothing
    EXPECT_EQ(copy->brks[1].flg2, 21);
}

TEST(espl, integral_derivative_multiple_and_shift) {
    const espl_ptr e = three_pieces();
    const espl_ptr integral = espl_integrate(e.get(), 4), back = espl_diff(integral.get());
    const espl_ptr twice = espl_mult(e.get(), 2), more = espl_plus(e.get(), 10), slope = espl_diff(e.get());
    ASSERT_TRUE(integral && back && twice && more && slope);
    EXPECT_EQ(integral->ncoe, 4);
    EXPECT_EQ(slope->ncoe, 2);
    for (double t = -1; t < 5; t += 0.25) {
        // By hand: 4 + t + tt up to 1; there 6, then + 5u - uu/2 + u^3 with u = t-1; at 3, with u = 2, 22;
        // then
        // + 7 (t-3).
        const double u = t - 1;
        const double area = t < 1   ? 4 + t + t * t
                            : t < 3 ? 6 + 5 * u - u * u / 2 + u * u * u
                                    : 22 + 7 * (t - 3);
        EXPECT_NEAR(espl(integral.get(), t, 0), area, 1e-13) << t;
        const double value = espl(e.get(), t, 0);
        EXPECT_NEAR(espl(back.get(), t, 0), value, 1e-13) << t;
        EXPECT_EQ(espl(twice.get(), t, 0), 2 * value) << t;
        EXPECT_EQ(espl(more.get(), t, 0), 10 + value) << t;
        EXPECT_EQ(espl(slope.get(), t, 0), espl(e.get(), t, 1)) << t;
    }
    for (std::size_t i = 0; i < 3; i++) {
        const int ncont = 10 + static_cast<int>(i);
        EXPECT_EQ(integral->brks[i].ncont, ncont + 1);
        EXPECT_EQ(slope->brks[i].ncont, ncont - 1);
        EXPECT_EQ(twice->brks[i].ncont, ncont);
        for (const espl_ptr* s : {&integral, &slope, &twice, &more})
            EXPECT_EQ((*s)->brks[i].flg2, 20 + static_cast<int>(i));
    }
    // A continuity at the end of its range, as a file may hold one, stays there.
    const espl_ptr odd = espl_copy(e.get());
    odd->brks[0].ncont = std::numeric_limits<int>::max();
    odd->brks[1].ncont = std::numeric_limits<int>::min();
    EXPECT_EQ(espl_integrate(odd.get(), 0)->brks[0].ncont, std::numeric_limits<int>::max());
    EXPECT_EQ(espl_diff(odd.get())->brks[1].ncont, std::numeric_limits<int>::min());
}

TEST(espl, sum_of_different_orders_and_bounds) {
    const espl_ptr a = three_pieces(), b = spline(2, {{0.5, {1, 1}}, {1, {-2, 0}}, {6, {3, 1}}});
    for (const espl_ptr& sum : {espl_add(a.get(), b.get()), espl_add(b.get(), a.get())}) {
        ASSERT_TRUE(sum);
        EXPECT_EQ(sum->ncoe, 3);
        std::vector<double> times;
        for (const _brkpoint& brk : sum->brks) {
            times.push_back(brk.time);
            EXPECT_EQ(brk.ncont, 0);
            EXPECT_EQ(brk.flg2, 0);
        }
        EXPECT_EQ(times, (std::vector<double>{0, 0.5, 1, 3, 6})); // 1 stands in both
        for (double t = -1; t < 8; t += 0.125)
            for (int der = 0; der < 3; der++)
                EXPECT_NEAR(espl(sum.get(), t, der), espl(a.get(), t, der) + espl(b.get(), t, der), 1e-12)
                    << t << " " << der;
    }
    const espl_ptr some = espl_mergebrks(a.get(), b.get(), 0.5, 3);
    ASSERT_TRUE(some);
    EXPECT_EQ(some->nbrks, 3); // both ends of the range count
    EXPECT_EQ(some->t0, 0.5);
    EXPECT_EQ(some->t1, 3);
    EXPECT_EQ(espl(some.get(), 2, 0), 0);
}

TEST(espl, times_for_plotting) {
    const espl_ptr e = spline(2, {{0, {0, 0}}, {1, {0, 0}}, {3, {0, 0}}});
    EXPECT_EQ(espl_plttimes(e.get(), 2),
              (std::vector<float>{0, 0.25F, 0.5F, 0.75F, 1, 1.5F, 2, 2.5F})); // without the last time
    const espl_ptr one = spline(2, {{5, {0, 0}}});
    EXPECT_TRUE(espl_plttimes(one.get(), 2).empty());
    EXPECT_EQ(espl_error(), 1);
}

} // namespace
} // namespace norva::test
