// The weights against their formulas in double precision.
#include "signal/parallel.h"
#include "signal/weight.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace norva {
namespace {

using floats = std::vector<float>;

TEST(weight, hamming) {
    EXPECT_DEATH(taycnb(40, 16, 3, nullptr), "STOP IN TAYCNB");
    floats one(1, 9.0F);
    hamwt(one.data(), 0, 0);
    EXPECT_EQ(one[0], 9);
    ham(one.data(), 1);
    EXPECT_EQ(one[0], 1);
    hamwt(one.data(), 1, 0);
    EXPECT_EQ(one[0], 1);
    for (int n : {2, 3, 64, 1023, 1024}) {
        floats a(n), b(n);
        ham(a.data(), n);
        hamwt(b.data(), n, 0);
        for (int k = 0; k < n; k++) {
            double want = 0.54 - 0.46 * std::cos(2 * M_PI * (k + 0.5) / n);
            EXPECT_NEAR(a[k], want, 1e-7) << n;
            EXPECT_NEAR(b[k], want, 1e-7) << n;
        }
    }
}

TEST(weight, single_values) {
    EXPECT_FLOAT_EQ(asarwt(1, 7), 0.116872F);
    EXPECT_FLOAT_EQ(asarwt(7, 7), 0.116872F);
    EXPECT_FLOAT_EQ(asarwt(50, 100), 1);
    EXPECT_FLOAT_EQ(asarwt(51, 100), 1);
    EXPECT_NEAR(asarwt(2, 199), 0.5 * (0.116872 + 0.1303526), 1e-6);
    EXPECT_NEAR(asarwt(100, 199), 1, 1e-6); // half way between the two middle values
    EXPECT_TRUE(std::isfinite(asarwt(1, 1)));
    // The table as a whole: its sum, and that of the first half times the places.
    double sum = 0, moment = 0;
    for (int k = 1; k <= 100; k++) {
        sum += asarwt(k, 100);
        if (k <= 50) moment += k * asarwt(k, 100);
        EXPECT_NEAR(asarwt(k, 100), asarwt(101 - k, 100), 1e-6) << k;
    }
    EXPECT_NEAR(sum, 60.766744, 1e-5);
    EXPECT_NEAR(moment, 986.82652, 1e-4);
    for (int n : {1, 2, 7, 64, 301}) {
        for (int k = 1; k <= n; k++) {
            const double u = 6.28318 * (k - 0.5 * (n + 1)) / n;
            const double want =
                1 + 0.585312 * std::cos(u) - 0.031568 * std::cos(2 * u) - 0.004362 * std::cos(3 * u);
            EXPECT_NEAR(taylor(k, n), want, 2e-7) << k << " of " << n;
        }
    }
    // J0 from the standard library.
    for (double x = -20; x <= 20; x += 0.37)
        EXPECT_NEAR(besj0(x), std::cyl_bessel_j(0, std::fabs(x)), 1e-7) << x;
}

TEST(weight, circular_taylor) {
    // The transform of a circular Taylor weight has zeros at mu = sigma sqrt(A^2 + (n-1/2)^2), n < nbar, and
    // its first sidelobe lies at the design level: summed directly over the aperture.
    const int n = 2001;
    floats w(n);
    taycnb(40, 5, n, w.data());
    EXPECT_EQ(w[0], 1);
    auto pattern = [&](double mu) {
        double sum = 0;
        for (int i = 0; i < n; i++) {
            double rho = i / (n - 1.0);
            sum += w[i] * std::cyl_bessel_j(0, M_PI * rho * mu) * rho * (i == n - 1 ? 0.5 : 1) / (n - 1);
        }
        return sum;
    };
    const double a = std::acosh(100.0) / M_PI, sigma = 5.2427640 / std::sqrt(a * a + 4.5 * 4.5);
    for (int zero : {1, 2, 3, 4}) {
        EXPECT_NEAR(pattern(sigma * std::sqrt(a * a + (zero - 0.5) * (zero - 0.5))) / pattern(0), 0, 2e-5)
            << zero;
    }
    double largest = 0;
    for (double mu = sigma * std::sqrt(a * a + 0.25); mu < 8; mu += 0.02) {
        largest = std::fmax(largest, std::fabs(pattern(mu) / pattern(0)));
    }
    EXPECT_NEAR(20 * std::log10(largest), -40, 0.7);
    floats limit(11);
    taycnb(60, 15, 11, limit.data());
    EXPECT_EQ(limit[0], 1);
    for (int k = 1; k < 11; k++) EXPECT_LT(limit[k], limit[k - 1]);
}

// The weight at 101 radii, and the two interpolations, in double precision.
double table_weight(double rsq) {
    static const floats w = [] {
        floats t(101);
        taycnb(40, 5, 101, t.data());
        t.push_back(0);
        return t;
    }();
    auto between = [](double h, auto table) {
        int i = static_cast<int>(h);
        return (1 - (h - i)) * table(i) + (h - i) * table(i + 1);
    };
    if (rsq > 1) return 0;
    double r = between(100 * rsq, [](int i) { return std::sqrt(i / 100.0); });
    return between(100 * r, [](int i) { return static_cast<double>(w[i]); });
}

TEST(weight, circular_by_tables) {
    EXPECT_EQ(cirwght(0), 1);
    EXPECT_EQ(cirwght(1.01F), 0);
    EXPECT_GT(cirwght(1), 0);
    EXPECT_EQ(cirwght(NAN), 0);
    for (int i = 0; i <= 1000; i++) {
        float rsq = static_cast<float>(i) / 1000;
        EXPECT_NEAR(cirwght(rsq), table_weight(rsq), 5e-6) << rsq;
    }
    EXPECT_EQ(diawght(1), 0);
    EXPECT_EQ(diawght(-1), 0);
    for (int k = 0; k < 100; k += 9) { // the projection at its own nodes: trapezoids outward from the axis
        double u = k / 100.0, sum = 0;
        for (int j = 0; j < 100; j++) sum += (j == 0 ? 0.5 : 1) * table_weight(u * u + j * j / 10000.0) / 100;
        EXPECT_NEAR(diawght(static_cast<float>(u)), sum, 2e-5) << u;
        EXPECT_EQ(diawght(static_cast<float>(-u)), diawght(static_cast<float>(u)));
    }
}

TEST(weight, windows_have_their_grid_ends_and_unit_sum) {
    floats nothing(1, 7.0F);
    weight(nothing.data(), nothing.data(), 0, 2);
    EXPECT_EQ(nothing[0], 7);
    for (int lw : {-1, 0, 1, 2, 3, 4, 10, 11, 12, 13}) { // every value, from its place on the grid
        for (int nw : {1, 2, 3, 7, 8, 33, 64}) {
            if (nw == 1 && (lw == 11 || lw == 13)) continue; // on the edge, where the weight is 0
            const int kind = lw == -1 || lw == 4 ? 0 : lw % 10;
            floats u(nw, 1.0F), du(nw); // what stands there counts with 4 only
            std::vector<double> want(nw);
            double sum = 0;
            for (int k = 0; k < nw; k++) {
                const double x = (lw < 10 && nw % 2 ? k - 0.5 * (nw - 1) : k - 0.5 * nw) / nw;
                const double c = std::cos(2 * M_PI * x);
                const double values[] = {1, diawght(static_cast<float>(2 * x)), 0.54 + 0.46 * c,
                                         0.42 + 0.5 * c + 0.08 * (2 * c * c - 1)};
                want[k] = values[kind];
                const bool end = k == 0 || k == nw - 1;
                if ((lw % 10 == 2 || lw == 4) && end) want[k] = 0.005;
                if (lw >= 10 && end) want[k] /= 2;
                sum += want[k];
            }
            weight(u.data(), du.data(), nw, lw);
            for (int k = 0; k < nw; k++) {
                EXPECT_NEAR(u[k], want[k] / sum, 1e-7) << lw << " " << nw << " " << k;
                EXPECT_NEAR(u[k] * du[k], u[k] > 0 ? u[nw / 2] : 0, 1e-7) << lw << " " << nw << " " << k;
                EXPECT_TRUE(u[k] > 0 || du[k] == 0) << lw << " " << nw << " " << k;
                if (want[k] > 1e-3) {
                    EXPECT_NEAR(du[k] * want[k] / want[nw / 2], 1, 1e-5) << lw << " " << nw << " " << k;
                }
            }
        }
    }
}

TEST(weight, two_dimensions) {
    for (auto [nx, ny] : {std::pair(8, 6), {7, 9}, {1, 5}, {200, 300}}) {
        floats a(2 * nx * ny, 1.0F);
        wght2d(a.data(), nx, ny, 1);
        for (int j = 0; j < ny; j += 3) {
            for (int i = 0; i < nx; i++) {
                double x = std::remainder(static_cast<double>(i) / nx, 1.0),
                       y = std::remainder(j / double(ny), 1.0);
                const double rsq = 4 * (x * x + y * y);
                if (std::fabs(rsq - 1) < 1e-5) continue; // on the edge, where the weight ends
                ASSERT_NEAR(a[2 * (j * nx + i)], table_weight(rsq), 1e-5) << i << " " << j;
            }
        }
        floats in = test::noise(2 * nx * ny, nx), out = in;
        wght2d(out.data(), nx, ny, -1);
        dwght2d(out.data(), nx, ny, -1);
        for (int k = 0; k < 2 * nx * ny; k++) EXPECT_NEAR(out[k], a[k] > 0 ? in[k] : 0, 1e-5);
        floats same = in;
        wght2d(same.data(), nx, ny, 0);
        dwght2d(same.data(), nx, ny, 0);
        EXPECT_EQ(same, in);
    }
    floats one = test::noise(2 * 500 * 300, 1), many = one;
    int before = parallel_limit(1);
    wght2d(one.data(), 500, 300, 1);
    parallel_limit(0);
    wght2d(many.data(), 500, 300, 1);
    parallel_limit(before);
    EXPECT_EQ(one, many);
    EXPECT_DEATH(wght2d(one.data(), 2, 2, 2), "STOP IN WGHT2D");
    EXPECT_DEATH(dwght2d(one.data(), 2, 2, 2), "STOP IN DWGHT2D");
}

TEST(weight, amplitude_without_its_weight) {
    // A constant of 3 under a Hamming weight over the elements 1..20, seen from its element 5 on.
    floats w(20), amp(16);
    hamwt(w.data(), 20, 0);
    for (int k = 0; k < 16; k++) amp[k] = 3 * w[k];
    float largest = 0;
    int ierr = 0;
    deham2(1, 20, 20, amp.data(), 1, 16, "HAM", &ierr, 1, 20, &largest);
    EXPECT_FLOAT_EQ(largest, 3);
    deham2(1, 20, 20, amp.data(), 1, 16, "none", &ierr, 3, 9, &largest); // the weights of the last call
    EXPECT_FLOAT_EQ(largest, 3);
    amp[2] *= 2;
    deham2(1, 20, 20, amp.data(), 1, 16, "H", &ierr, 4, 16, &largest); // outside the limits
    EXPECT_FLOAT_EQ(largest, 3);
    // AMP begins at element 5 of the weight: the Taylor weight is shifted with it, the Hamming weight is not.
    for (int k = 0; k < 16; k++) amp[k] = 3 * taylor(k + 5, 20);
    detay2(1, 20, 20, amp.data(), "T", 5, 20, 1, 20, &largest);
    EXPECT_FLOAT_EQ(largest, 3);
    for (int k = 0; k < 16; k++) amp[k] = 3 * w[k];
    deham2(1, 20, 20, amp.data(), 5, 20, "H", &ierr, 7, 30, &largest); // elements 7..20: values 3..16 of AMP
    EXPECT_FLOAT_EQ(largest, 3);
    amp[1] = 100;
    deham2(1, 20, 20, amp.data(), 5, 20, "H", &ierr, 7, 30, &largest);
    EXPECT_FLOAT_EQ(largest, 3);
    deham2(1, 20, 20, amp.data(), 5, 20, "H", &ierr, 6, 30, &largest);
    EXPECT_GT(largest, 100);
    for (const char* type : {"T", "a"}) {
        for (int k = 0; k < 16; k++) amp[k] = 3 * (type[0] == 'a' ? asarwt(k + 1, 20) : taylor(k + 1, 20));
        detay2(1, 20, 20, amp.data(), type, 1, 16, 2, 15, &largest);
        EXPECT_FLOAT_EQ(largest, 3) << type;
    }
}

} // namespace
} // namespace norva
