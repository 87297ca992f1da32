// Array kernels: scalars by a negative count, overlap, wrap-around and strides.
#include "signal/numbers.h"
#include "signal/vector.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

namespace norva {
namespace {

using floats = std::vector<float>;

TEST(vector, elementwise_and_scalar_forms) {
    const floats a = {1, -2, 3}, b = {4, 5, -6};
    struct row {
        void (*kernel)(int, const float*, const float*, float*);
        int n;
        floats want;
    };
    const row table[] = {
        {prod, 3, {4, -10, -18}}, {prod, -3, {4, 5, -6}},  {asum, 3, {5, 3, -3}},   {asum, -2, {5, 6, 99}},
        {adif, 3, {-3, -7, 9}},   {powr, 3, {17, 29, 45}}, {prod, 0, {99, 99, 99}}, {asum, 1, {5, 99, 99}},
    };
    for (const row& r : table) {
        floats c(3, 99.0F);
        r.kernel(r.n, a.data(), b.data(), c.data());
        EXPECT_EQ(c, r.want);
        if (r.n == 3) { // in place
            floats d = a;
            r.kernel(3, d.data(), b.data(), d.data());
            EXPECT_EQ(d, r.want);
        }
    }
    floats s = {2, 3, 4};
    prod(-3, s.data(), s.data(), s.data()); // the scalar is the first element of the array it scales
    EXPECT_EQ(s, (floats{4, 6, 8}));
    EXPECT_EQ(engy(3, a.data(), b.data()), 91);
    EXPECT_EQ(zsum(3, a.data()), 2);
    EXPECT_EQ(dot(3, a.data(), b.data()), 4 - 10 - 18);
    EXPECT_EQ(zmax(3, a.data()), 3);
    EXPECT_EQ(zmin(3, a.data()), -2);
    EXPECT_EQ(zsum(0, nullptr), 0);
    EXPECT_DEATH(adif(-1, a.data(), b.data(), s.data()), "IN APROC/ADIF...N CANNOT BE NEGATIVE");
    floats many(1 << 22, 0.1F);
    EXPECT_NEAR(zsum(1 << 22, many.data()), 0.1 * (1 << 22), 1); // a running single would be off by thousands
}

TEST(vector, copies_move_bits) {
    floats a = {1, 2, 3, 4}, b(4, 9.0F);
    xmit(0, a.data(), b.data());
    EXPECT_EQ(b, (floats{9, 9, 9, 9}));
    xmit(-3, a.data() + 1, b.data());
    EXPECT_EQ(b, (floats{2, 2, 2, 9}));
    xmit(3, a.data(), a.data() + 1); // overlapping
    EXPECT_EQ(a, (floats{1, 1, 2, 3}));
    const std::int32_t nan_bits = 0x7fa00001;
    std::int32_t words[3] = {0, 0, 0};
    float as_real = 0;
    xmt(1, &nan_bits, &as_real);
    ixmt(-3, &as_real, words);
    for (std::int32_t w : words) EXPECT_EQ(w, nan_bits);
    swap(2, a.data(), b.data());
    EXPECT_EQ(a, (floats{2, 2, 2, 3}));
    EXPECT_EQ(b, (floats{1, 1, 2, 9}));
    linseq(a.data(), 4, -1, 0.5F);
    EXPECT_EQ(a, (floats{-1, -0.5F, 0, 0.5F}));
    EXPECT_EQ(length("ab c   "), 4);
    EXPECT_EQ(length("   "), 0);
}

TEST(vector, complex_forms) {
    const floats x = {1, 2, 3, -4}, y = {5, 6, -7, 8};
    floats re(2), im(2), c(4), p(2);
    reima(x.data(), 2, re.data(), im.data());
    EXPECT_EQ(re, (floats{1, 3}));
    EXPECT_EQ(im, (floats{2, -4}));
    cpxmul(2, x.data(), y.data(), c.data());
    EXPECT_EQ(c, (floats{-7, 16, 11, 52})); // (1+2i)(5+6i), (3-4i)(-7+8i)
    c = x;
    cpxmul(-2, c.data(), c.data(), c.data());
    EXPECT_EQ(c, (floats{-3, 4, 11, 2})); // (1+2i)(1+2i), (1+2i)(3-4i)
    powrc(2, x.data(), p.data());
    EXPECT_EQ(p, (floats{5, 25}));
    floats root(2);
    asqrt(2, p.data(), root.data());
    EXPECT_FLOAT_EQ(root[0], std::sqrt(5.0F));
    EXPECT_EQ(root[1], 5);
    c = x;
    powrc(2, c.data(), c.data());
    EXPECT_EQ(c[1], 25);
}

TEST(vector, rotation_in_place) {
    for (int len : {1, 2, 5, 6, 12}) {
        for (int n : {0, 1, 4, 7, 12, -1, -5, -13, 24, INT_MIN, INT_MAX}) {
            floats a(len);
            std::iota(a.begin(), a.end(), 0.0F);
            shaft(a.data(), len, n);
            for (int k = 0; k < len; k++) {
                long long to = ((static_cast<long long>(k) + n) % len + len) % len;
                EXPECT_EQ(a[to], k) << len << " " << n;
            }
        }
    }
}

TEST(vector, circular_extraction) {
    const int nx = 5, ny = 3;
    floats a(nx * ny);
    std::iota(a.begin(), a.end(), 0.0F);
    // From the second word of the last row: wraps in both directions.
    floats b(4 * 2);
    arrext(a.data(), nx, ny, 2 * nx + 3, 4, 2, b.data());
    EXPECT_EQ(b, (floats{12, 13, 14, 10, 2, 3, 4, 0}));
    floats bigger(7 * 1);
    arrext(a.data(), nx, ny, 1, 7, 1, bigger.data());
    EXPECT_EQ(bigger, (floats{0, 1, 2, 3, 4, 0, 1}));
    for (int k0 = 1; k0 <= nx * ny; k0++) { // k0 and -k0 undo each other
        floats there(nx * ny), back(nx * ny);
        arrext(a.data(), nx, ny, k0, nx, ny, there.data());
        arrext(there.data(), nx, ny, -k0, nx, ny, back.data());
        EXPECT_EQ(back, a) << k0;
    }
    for (auto [cx, cy] : {std::pair(4, 6), {5, 6}, {4, 3}, {1, 7}, {5, 1}}) {
        floats data = test::noise(2 * cx * cy, cx), there(2 * cx * cy), back(2 * cx * cy);
        half_rotate(data.data(), cx, cy, there.data());
        EXPECT_EQ(there[0], data[2 * ((cy / 2) * cx + cx / 2)]); // the middle comes first, real part first
        EXPECT_EQ(there[1], data[2 * ((cy / 2) * cx + cx / 2) + 1]);
        half_rotate(there.data(), cx, cy, back.data(), true);
        EXPECT_EQ(back, data);
    }
}

TEST(vector, strides_by_two_addresses) {
    floats a = {1, 10, 2, 20, 3, 30}, p(6, 0.0F);
    EXPECT_EQ(sumg(3, &a[0], &a[2]), 6);
    EXPECT_EQ(sumg(3, &a[5], &a[3]), 60); // backward
    EXPECT_EQ(dotg(3, &a[0], &a[2], &a[1], &a[3]), 10 + 40 + 90);
    powrg(3, &a[0], &a[2], &a[1], &a[3], &p[0], &p[1]);
    EXPECT_EQ(p, (floats{101, 404, 909, 0, 0, 0}));
    asumg(3, &a[0], &a[2], &a[1], &a[3], &p[1], &p[3]);
    EXPECT_EQ(p, (floats{101, 11, 909, 22, 0, 33}));
    prodg(3, &a[0], &a[2], &a[1], &a[3], &a[0], &a[2]); // in place
    EXPECT_EQ(a, (floats{10, 10, 40, 20, 90, 30}));
    xmitg(2, &a[0], &a[0], &p[0], &p[2]); // distance 0: one scalar
    EXPECT_EQ(p[2], 10);
    swapg(3, &a[0], &a[2], &a[1], &a[3]);
    EXPECT_EQ(a, (floats{10, 10, 20, 40, 30, 90}));
    EXPECT_DEATH(sumg(-1, &a[0], &a[2]), " STOP IN GPROC.....N must be positive");
}

TEST(vector, editing_keeps_the_marked_parts) {
    struct row {
        std::vector<int> marks;
        floats want;
    };
    const row table[] = {
        {{3, 5}, {0, 0, 0.5F, 1, 0.5F, 0, 0}},
        {{1, 4}, {1, 1, 1, 0.5F, 0, 0, 0}},
        {{4}, {0, 0, 0, 0.5F, 1, 1, 1}},
        {{2, 3, 6, 7}, {0, 0.5F, 0.5F, 0, 0, 0.5F, 1}},
        {{1, 3, 6}, {1, 1, 0.5F, 0, 0, 0.5F, 1}},
        {{1, 7}, {1, 1, 1, 1, 1, 1, 1}},
        {{1, 3, 4, 7}, {1, 1, 1, 1, 1, 1, 1}}, // nothing lies between
        {{7}, {0, 0, 0, 0, 0, 0, 1}},
    };
    for (const row& r : table) {
        floats x(7, 1.0F), c(14, 1.0F);
        edata(x.data(), 7, r.marks.data(), static_cast<int>(r.marks.size()));
        EXPECT_EQ(x, r.want) << r.marks[0];
        edatc(c.data(), 7, r.marks.data(), static_cast<int>(r.marks.size()));
        for (int k = 0; k < 14; k++) EXPECT_EQ(c[k], r.want[k / 2]) << r.marks[0];
    }
}

TEST(numbers, helpers) {
    const int nice[][2] = {{-1, 2},  {0, 2},     {2, 2},     {3, 3},       {7, 8},
                           {13, 15}, {101, 108}, {300, 300}, {4001, 4050}, {8193, 8640}};
    for (auto [n, want] : nice) EXPECT_EQ(mynino(n), want) << n;
    EXPECT_EQ(nint(2.5), 3);
    EXPECT_EQ(nint(-2.5), -3);
    EXPECT_EQ(nint(0.49999999999999994), 0);
    EXPECT_EQ(nint(1e30), INT_MAX);
    EXPECT_EQ(nint(-1e30), INT_MIN);
    EXPECT_EQ(nint(NAN), 0);
    EXPECT_EQ(igcd(12, 18), 6);
    EXPECT_EQ(igcd(-12, 0), 12);
    EXPECT_FLOAT_EQ(cfreq(9288, 1.5F, 424), 9288 + 0.75F * 423);
    EXPECT_FALSE(gnum(1));
    EXPECT_FALSE(gnum(14));
}

} // namespace
} // namespace norva
