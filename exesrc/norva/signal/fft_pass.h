#pragma once
// What the passes of a transform are told. Free of the standard library on purpose: the kernels that include
// it are compiled for several processors, and must not leave behind inline code that others could pick up.

namespace norva {

// One pass of radix R over n = R m s samples:
//   y[q + s(R p + k)] = w^(k p) sum j=0..R-1 of x[q + s(p + j m)] exp(-2 pi i j k / R),   w = exp(-2 pi i /
//   (R m)), p = 0..m-1, q = 0..s-1
// after which the next pass, with the run s R, works on y. The first pass has s = 1, the last one m = 1.
struct fft_pass {
    int radix;
    int m;
    int s;
    // w^(k p). First pass: for each vector of groups p, vectors of real and imaginary parts for k = 1..R-1,
    // with the lanes in the order of fft_lane. Later passes: for each p the pairs k = 1..R-1.
    const float* twiddles;
    const float*
        odd; // radix without its own code: cos, sin of 2 pi j k / R for k = 1..(R-1)/2, in it j likewise
};

// How samples lie between the passes: in blocks of whole vectors, or one by one (see fft_kernel.h).
enum class fft_layout { blocks_of_8, blocks_of_4, planes };

constexpr int fft_lanes(fft_layout layout) {
    return layout == fft_layout::blocks_of_4 ? 4 : 8;
}

// Interleaved samples are split, and joined again, within the halves of a vector of 8: lane t holds sample
// fft_lane(t).
constexpr int fft_lane(int t) {
    return (t & 1) | (t & 2) << 1 | (t & 4) >> 1;
}

constexpr int fft_longest_odd = 64;

// Short lengths with code of their own, in blocks of 8; second is 1 where two passes do.
struct fft_short_route {
    int first, second, third;
    constexpr int n() const { return first * second * third; }
};
constexpr fft_short_route fft_short_routes[] = {{8, 1, 8}, {8, 4, 4}, {8, 8, 4}};

// All passes of one length.
struct fft_schedule {
    int n;
    fft_layout layout;
    int short_route; // place in fft_short_routes, or -1
    int count;       // at least 2
    const fft_pass* passes;
};

// Floats of scratch that a schedule of n samples needs, on a cache line boundary. The second half of it
// starts an odd number of lines after the first, so that the two do not meet in the same cache sets.
constexpr long fft_half_work(int n) {
    return (2L * n + 31) / 32 * 32 + 48;
}
constexpr long fft_work(int n) {
    return 2 * fft_half_work(n);
}

// Transforms interleaved samples from `in` to `out`, which may be the same; exponent sign - or, with
// positive, +. The samples from `used` on are known to be zero.
using fft_runner = void (*)(const fft_schedule& schedule, const float* in, int used, float* out,
                            bool positive, float* work);
void fft_run_avx2(const fft_schedule& schedule, const float* in, int used, float* out, bool positive,
                  float* work);
void fft_run_base(const fft_schedule& schedule, const float* in, int used, float* out, bool positive,
                  float* work);

// Transforms eight neighbouring columns of interleaved samples, rows `row` floats apart, in place. The
// schedule is one for columns: eight of them make one run, so that its first pass has s = 8 and n is eight
// times the column's length.
using fft_column_runner = void (*)(const fft_schedule& schedule, float* a, long row, bool positive,
                                   float* work);
void fft_columns_avx2(const fft_schedule& schedule, float* a, long row, bool positive, float* work);
void fft_columns_base(const fft_schedule& schedule, float* a, long row, bool positive, float* work);

} // namespace norva
