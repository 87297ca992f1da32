// The transforms against direct sums in double precision.
#include "signal/fft.h"
#include "signal/parallel.h"
#include "support/reference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace norva {
namespace {

using test::direct_transform;
using test::noise;
using spectrum = std::vector<std::complex<double>>;

bool power_of_two(int n) {
    return (n & (n - 1)) == 0;
}

// Largest error of n interleaved samples against the direct sums by the sign of `sign`, as a part of the
// permitted one. An exact result gives 0.
double error_ratio(const float* got, const spectrum& sums, int sign) {
    int n = static_cast<int>(sums.size());
    double error = 0, largest = 0;
    for (int k = 0; k < n; k++) {
        std::complex<double> want = sums[sign > 0 ? k : (n - k) % n];
        error = std::fmax(error, std::abs(std::complex<double>(got[2 * k], got[2 * k + 1]) - want));
        if (!std::isfinite(got[2 * k]) || !std::isfinite(got[2 * k + 1])) return 1e30;
        largest = std::fmax(largest, std::abs(want));
    }
    return error == 0 ? 0 : error / (4 * 1.2e-7 * std::log2(n) * largest);
}

// Every way to the transform of x by one sign, each with its name.
void check_all_routes(const std::vector<float>& x, const spectrum& sums, int sign) {
    const int n = static_cast<int>(sums.size());
    const std::string at = " N = " + std::to_string(n) + " sign " + std::to_string(sign);
    std::vector<float> a = x;
    gfft(a.data(), n, sign);
    EXPECT_LT(error_ratio(a.data(), sums, sign), 1) << "gfft" << at;

    std::vector<float> re(n), im(n), work(n), work2(n);
    auto split = [&] {
        for (int k = 0; k < n; k++) re[k] = x[2 * k], im[k] = x[2 * k + 1];
    };
    auto joined = [&] {
        std::vector<float> both(2 * n);
        for (int k = 0; k < n; k++) both[2 * k] = re[k], both[2 * k + 1] = im[k];
        return both;
    };
    split();
    fourt(re.data(), im.data(), &n, 1, (1 - sign) / 2, 1, work.data(), work2.data());
    EXPECT_LT(error_ratio(joined().data(), sums, sign), 1) << "fourt" << at;

    if (power_of_two(n)) {
        a = x;
        cfft(a.data(), n, sign);
        EXPECT_LT(error_ratio(a.data(), sums, sign), 1) << "cfft" << at;
        a = x;
        fft2(a.data(), a.data() + 1, n, 2 * sign);
        EXPECT_LT(error_ratio(a.data(), sums, sign), 1) << "fft2, interleaved" << at;
        split();
        fft2(re.data(), im.data(), n, sign);
        EXPECT_LT(error_ratio(joined().data(), sums, sign), 1) << "fft2, separate" << at;
    }

    // As the second of two rows, and as the middle one of three columns.
    a.assign(4 * n, 0.0F);
    std::memcpy(&a[2 * n], x.data(), 2 * n * sizeof(float));
    fft2d(a.data(), n, 2, sign, 0);
    EXPECT_LT(error_ratio(&a[2 * n], sums, sign), 1) << "fft2d, rows" << at;
    if (n > FFT2D_MAX_NY) return;
    a.assign(6 * n, 0.0F);
    for (int k = 0; k < n; k++) a[6 * k + 2] = x[2 * k], a[6 * k + 3] = x[2 * k + 1];
    fft2d(a.data(), 3, n, 0, sign);
    std::vector<float> column(2 * n);
    for (int k = 0; k < n; k++) column[2 * k] = a[6 * k + 2], column[2 * k + 1] = a[6 * k + 3];
    EXPECT_LT(error_ratio(column.data(), sums, sign), 1) << "fft2d, columns" << at;
    for (int k = 0; k < n; k++) ASSERT_EQ(a[6 * k], 0.0F) << "neighbour column" << at;
}

void check_length(int n) {
    std::vector<float> x = noise(2 * n, n);
    spectrum sums = direct_transform(x.data(), n);
    check_all_routes(x, sums, +1);
    check_all_routes(x, sums, -1);
}

TEST(fft, agrees_with_direct_sums_up_to_600) {
    for (int n = 1; n <= 600; n++) check_length(n);
}

TEST(fft, agrees_with_direct_sums_at_long_lengths) {
    for (int n : {1000, 1001, 1023, 1024, 1080, 2047, 2048, 3000, 3600, 4093, 4096, 6561, 8192})
        check_length(n);
    for (int n : {9973, 9998, 10000, 16384}) check_length(n);
}

TEST(fft, zeros_behind_the_samples) {
    for (int n : {5, 60, 64, 300, 375, 400, 1024, 2048, 4000, 4093}) {
        for (int used : {1, n / 8, n / 4, n / 4 + 1, n / 3, n / 2, n - 1, n}) {
            std::vector<float> in = noise(2 * n, n), out(2 * n, 7.0F);
            std::fill(in.begin() + 2 * used, in.end(), 0.0F);
            gfft_padded(in.data(), used, out.data(), n, +1);
            std::vector<float> whole = in;
            gfft(whole.data(), n, +1);
            for (int k = 0; k < 2 * n; k++) ASSERT_NEAR(out[k], whole[k], 2e-7 * n) << n << " " << used;
        }
    }
}

TEST(fft, other_strides_reach_only_their_elements) {
    const int n = 16;
    std::vector<float> x = noise(2 * n, 7), re(3 * n, 5.0F), im(3 * n, 6.0F);
    for (int k = 0; k < n; k++) re[3 * k] = x[2 * k], im[3 * k] = x[2 * k + 1];
    fft2(re.data(), im.data(), n, -3);
    for (int k = 0; k < n; k++) {
        x[2 * k] = re[3 * k], x[2 * k + 1] = im[3 * k];
        EXPECT_EQ(re[3 * k + 1], 5.0F);
        EXPECT_EQ(im[3 * k + 2], 6.0F);
    }
    std::vector<float> in = noise(2 * n, 7);
    EXPECT_LT(error_ratio(x.data(), direct_transform(in.data(), n), -1), 1);
}

TEST(fft, centred_pair) {
    // The transform about sample N/2 of exp(+2 pi i m (k - N/2) / N) is N at zero frequency + m: sample idc +
    // m for the sign -1, idc - m for +1. Sample 0 of the spectrum stands at idc.
    const int n = 64, m = 5;
    std::vector<float> a(2 * n), c(2 * n), back(2 * n);
    for (int k = 0; k < n; k++) {
        a[2 * k] = static_cast<float>(std::cos(2 * M_PI * m * (k - n / 2) / n));
        a[2 * k + 1] = static_cast<float>(std::sin(2 * M_PI * m * (k - n / 2) / n));
    }
    for (int idc : {0, 3, 32, 63}) {
        for (int kss : {0, -1, +1}) {
            transf(a.data(), n, idc, c.data(), kss);
            int peak = (idc + (kss > 0 ? -m : m) + n) % n;
            EXPECT_NEAR(c[2 * peak], n, 1e-4) << idc << " " << kss;
            EXPECT_NEAR(c[2 * peak + 1], 0, 1e-4) << idc << " " << kss;
        }
    }
    for (int size : {2, 128, 4096}) {
        std::vector<float> in = noise(2 * size, size), out(2 * size), spec(2 * size);
        for (int idc = -3; idc<size + 5; idc += size> 128 ? 321 : 1) {
            for (int kss : {0, 1}) {
                transf(in.data(), size, idc, spec.data(), kss);
                transi(out.data(), size, idc, spec.data(), kss);
                for (int k = 0; k < 2 * size; k++) ASSERT_NEAR(out[k], in[k], 2e-6) << size << " " << idc;
            }
        }
    }
}

TEST(fft, the_longest_transforms) {
    // An impulse at sample m gives exp(sign 2 pi i m k / n).
    for (int n : {32768, 1 << 18}) {
        const int m = n / 7;
        for (int sign : {+1, -1}) {
            std::vector<float> a(2 * static_cast<std::size_t>(n));
            a[2 * m] = 1;
            fft2(a.data(), a.data() + 1, n, 2 * sign);
            for (long long k = 0; k < n; k++) {
                const double arg = sign * 2 * M_PI * static_cast<double>(m * k % n) / n;
                ASSERT_NEAR(a[2 * k], std::cos(arg), 1e-5) << n << " " << k;
                ASSERT_NEAR(a[2 * k + 1], std::sin(arg), 1e-5) << n << " " << k;
            }
        }
    }
}

TEST(fft, sign_zero_of_the_keys_is_plus) {
    std::vector<float> x = noise(2 * 16, 1), plus = x, zero = x;
    cfft(plus.data(), 16, +1);
    cfft(zero.data(), 16, 0);
    EXPECT_EQ(zero, plus);
}

TEST(fft, same_bits_with_any_number_of_threads) {
    for (auto [nx, ny] : {std::pair(128, 64), {100, 300}, {1024, 256}, {17, 1000}}) {
        std::vector<float> in = noise(2 * nx * ny, nx), one = in, many = in;
        int before = parallel_limit(1);
        fft2d(one.data(), nx, ny, +1, -1);
        parallel_limit(0);
        fft2d(many.data(), nx, ny, +1, -1);
        parallel_limit(before);
        EXPECT_EQ(0, std::memcmp(one.data(), many.data(), one.size() * sizeof(float))) << nx << " by " << ny;
    }
}

TEST(fft, not_a_number_stays_in_its_row) {
    const float bad = std::numeric_limits<float>::quiet_NaN();
    for (int n : {1, 2, 7, 64, 100, 1001, 1024, 4093}) {
        std::vector<float> a = noise(2 * n, 3);
        a[2 * (n / 2)] = bad;
        gfft(a.data(), n, 1);
        EXPECT_TRUE(std::isnan(a[0])) << n;
        a[0] = std::numeric_limits<float>::infinity();
        gfft(a.data(), n, -1);
    }
    for (auto [nx, ny] : {std::pair(0, 0), {0, 5}, {5, 0}, {1, 1}}) { // nothing to do
        std::vector<float> few = {1, 2, 3, 4}, same = few;
        fft2d(few.data(), nx, ny, 1, -1);
        EXPECT_EQ(few, same);
    }
    std::vector<float> grid = noise(2 * 32 * 8, 4);
    grid[2 * 32 * 3] = bad;
    fft2d(grid.data(), 32, 8, 1, 0);
    for (int k = 0; k < 32 * 8; k++) EXPECT_EQ(std::isnan(grid[2 * k] + grid[2 * k + 1]), k / 32 == 3) << k;
}

TEST(fft, transform_lengths) {
    const int table[][2] = {{-5, 2},      {0, 2},       {1, 2},        {2, 2},
                            {3, 4},       {16, 16},     {17, 32},      {1024, 1024},
                            {1025, 2048}, {8192, 8192}, {8193, 16384}, {65537, 131072}};
    for (auto [n, want] : table) EXPECT_EQ(iradx2(n), want) << n;
}

TEST(fft_stops, lengths_and_signs) {
    std::vector<float> a(2 * 16384);
    gfft(a.data(), 0, 1);
    fft2(a.data(), a.data() + 1, 1, 0);
    int n = 8;
    fourt(a.data(), a.data() + 8, &n, 0, 0, 1, nullptr, nullptr);
    EXPECT_DEATH(gfft(a.data(), 8, 0), "STOP IN GFFT");
    EXPECT_DEATH(gfft(a.data(), 8, 2), "STOP IN GFFT");
    EXPECT_DEATH(gfft(a.data(), 10001, 1), "STOP IN GFFT");
    EXPECT_DEATH(cfft(a.data(), 12, 1), "STOP IN CFFT");
    EXPECT_DEATH(fft2(a.data(), a.data() + 1, 24, 2), "STOP IN FFT2");
    EXPECT_DEATH(fft2d(a.data(), 1, 8193, 1, 1), "STOP IN FFT2D");
}

} // namespace
} // namespace norva
