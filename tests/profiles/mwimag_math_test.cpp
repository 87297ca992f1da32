// Moving window images of point scatterers with known motion.
#include "profiles/mwimag.h"
#include "signal/parallel.h"
#include "signal/progress.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <thread>
#include <vector>

namespace norva {
namespace {

// A scatterer at range y gates and crossrange x cells of a window of nti records at the middle of the run,
// whose range changes by drift gates a record.
struct scatterer {
    double x, y, amplitude, drift;
};

std::vector<float> scene(int nf, int nt, int nti, int ksx, int ksy, const std::vector<scatterer>& points) {
    std::vector<float> q(2 * static_cast<std::size_t>(nf) * nt);
    for (int j = 0; j < nt; j++) {
        for (int k = 0; k < nf; k++) {
            double re = 0, im = 0;
            for (const scatterer& s : points) {
                double arg = -2 * M_PI *
                             (ksx * s.x * j / nti + ksy * (s.y + s.drift * (j - nt / 2)) * (k - nf / 2) / nf);
                re += s.amplitude * std::cos(arg);
                im += s.amplitude * std::sin(arg);
            }
            q[2 * (static_cast<std::size_t>(j) * nf + k)] = static_cast<float>(re);
            q[2 * (static_cast<std::size_t>(j) * nf + k) + 1] = static_cast<float>(im);
        }
    }
    return q;
}

struct result {
    int nto = -1;
    std::vector<float> ap, xp, yp;
};
result images(const std::vector<float>& q, int nf, int nt, int nti, int lag, int ksx, int ksy, int ifx,
              int ify, int npk) {
    const std::size_t n = static_cast<std::size_t>(npk) * ((nt - nti) / lag + 1);
    result r{0, std::vector<float>(n, -1.0F), std::vector<float>(n, -1.0F), std::vector<float>(n, -1.0F)};
    mwimag(q.data(), nf, nt, nti, lag, ksx, ksy, ifx, ify, npk, &r.nto, r.ap.data(), r.xp.data(),
           r.yp.data());
    return r;
}

TEST(mwimag, scatterers_stand_where_the_axes_say) {
    // Even and odd sizes of windows and images, both signs.
    for (auto [nf, nti, ifx, ify] :
         {std::tuple(64, 32, 2, 2), {45, 27, 1, 1}, {45, 32, 1, 2}, {64, 27, 2, 1}}) {
        for (int ksx : {-1, 1}) {
            for (int ksy : {-1, 1}) {
                const std::vector<scatterer> points = {{3.3, -7.6, 1.0, 0}, {-6.5, 9.25, 0.6, 0}};
                const int nt = nti + 12;
                std::vector<float> q = scene(nf, nt, nti, ksx, ksy, points);
                result r = images(q, nf, nt, nti, 5, ksx, ksy, ifx, ify, 2);
                ASSERT_EQ(r.nto, 3);
                for (int i = 0; i < r.nto; i++) {
                    for (int k = 0; k < 2; k++) {
                        EXPECT_NEAR(r.xp[2 * i + k], points[k].x, 0.06)
                            << nf << " " << nti << " " << i << " " << k;
                        EXPECT_NEAR(r.yp[2 * i + k], points[k].y, 0.06)
                            << nf << " " << nti << " " << i << " " << k;
                    }
                    EXPECT_NEAR(r.ap[2 * i], 1, 0.01);
                    EXPECT_NEAR(r.ap[2 * i + 1] / r.ap[2 * i], 0.6, 0.01);
                }
            }
        }
    }
}

TEST(mwimag, tracks_follow_the_motion_on_one_scale) {
    const int nf = 128, nt = 200, nti = 32, lag = 8;
    std::vector<float> q = scene(nf, nt, nti, -1, 1, {{0, 4, 1, 0.02}});
    for (std::size_t k = 0; k < q.size() / 2; k++) q[k] *= 0.5F; // the first half of the run is weaker
    result r = images(q, nf, nt, nti, lag, -1, 1, 2, 2, 1);
    ASSERT_EQ(r.nto, (nt - nti) / lag + 1);
    for (int i = 0; i < r.nto; i++) {
        const double middle = i * lag + 0.5 * (nti - 1);
        EXPECT_NEAR(r.yp[i], 4 + 0.02 * (middle - nt / 2), 0.1) << i;
    }
    EXPECT_NEAR(r.ap[0], 0.5, 0.02);
    EXPECT_EQ(*std::max_element(r.ap.begin(), r.ap.end()), 1);
}

TEST(mwimag, empty_places_and_edges) {
    // A constant over one frequency and one record has no peak: its image is flat. Entries without a peak
    // stay 0.
    std::vector<float> q = {1, 0};
    result r = images(q, 1, 1, 1, 1, 1, 1, 1, 1, 3);
    EXPECT_EQ(r.nto, 1);
    EXPECT_EQ(r.ap, std::vector<float>(3, 0.0F));
    std::vector<float> dark(2 * 16 * 8);
    r = images(dark, 16, 8, 8, 1, 1, 1, 2, 2, 2);
    EXPECT_EQ(r.nto, 1);
    EXPECT_EQ(r.xp, std::vector<float>(2, 0.0F));
    int nto = 7;
    mwimag(dark.data(), 16, 8, 9, 1, 1, 1, 2, 2, 2, &nto, nullptr, nullptr,
           nullptr); // window longer than the run
    EXPECT_EQ(nto, 0);
    EXPECT_DEATH(mwimag(dark.data(), 16, 8, 8, 1, 1, 1, 2, 2, 51, &nto, nullptr, nullptr, nullptr),
                 "STOP IN MWIMAG #2");
    EXPECT_DEATH(mwimag(dark.data(), 1025, 513, 512, 1, 1, 1, 2, 2, 1, &nto, nullptr, nullptr, nullptr),
                 "STOP IN MWIMAG #1");
}

TEST(mwimag, bad_samples_spoil_only_the_windows_that_hold_them) {
    std::vector<float> q = scene(32, 60, 16, -1, 1, {{3, -4, 1, 0}});
    const result clean = images(q, 32, 60, 16, 4, -1, 1, 2, 2, 3);
    q[2 * (32 * 40 + 5)] = NAN;
    const result r = images(q, 32, 60, 16, 4, -1, 1, 2, 2, 3);
    for (int i = 0; i < r.nto; i++) {
        const bool spoilt = 4 * i <= 40 && 40 < 4 * i + 16;
        EXPECT_EQ(r.xp[3 * i], spoilt ? 0 : clean.xp[3 * i]) << i;
        EXPECT_EQ(r.yp[3 * i], spoilt ? 0 : clean.yp[3 * i]) << i;
    }
}

std::vector<int> reported;

TEST(mwimag, same_bits_with_any_number_of_threads_and_progress_in_order) {
    std::vector<float> q = test::noise(2 * 40 * 60, 5);
    int before = parallel_limit(1);
    result one = images(q, 40, 60, 20, 2, 1, -1, 2, 2, 10);
    parallel_limit(0);
    const std::thread::id here = std::this_thread::get_id();
    static std::thread::id caller;
    caller = here;
    signal_hooks.progress = [](int indx, int ntot) {
        EXPECT_EQ(ntot, 21);
        EXPECT_EQ(std::this_thread::get_id(), caller);
        reported.push_back(indx);
    };
    result many = images(q, 40, 60, 20, 2, 1, -1, 2, 2, 10);
    signal_hooks.progress = [](int, int) {};
    parallel_limit(before);
    EXPECT_EQ(one.ap, many.ap);
    EXPECT_EQ(one.xp, many.xp);
    EXPECT_EQ(one.yp, many.yp);
    ASSERT_EQ(reported.size(), 21U);
    for (int i = 0; i < 21; i++) EXPECT_EQ(reported[i], i + 1);
}

} // namespace
} // namespace norva
