#include "anchors.h"

#include "signal/interp.h"
#include "signal/weight.h"

#ifdef NORVA_BENCH_FFTW
#include <fftw3.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>
#include <numbers>

namespace norva::bench {

#ifdef NORVA_BENCH_FFTW
bool fftw::available() {
    return true;
}
fftw::fftw(int nx, int ny, int sign, float* a) {
    auto* c = reinterpret_cast<fftwf_complex*>(a);
    plan_ = ny == 1 ? fftwf_plan_dft_1d(nx, c, c, sign, FFTW_MEASURE)
                    : fftwf_plan_dft_2d(ny, nx, c, c, sign, FFTW_MEASURE);
}
fftw::~fftw() {
    fftwf_destroy_plan(static_cast<fftwf_plan>(plan_));
}
void fftw::run() {
    fftwf_execute(static_cast<fftwf_plan>(plan_));
}
#else
bool fftw::available() {
    return false;
}
fftw::fftw(int, int, int, float*) {}
fftw::~fftw() = default;
void fftw::run() {}
#endif

constexpr std::align_val_t line{64};
floats::floats(std::size_t n) : p_(static_cast<float*>(::operator new(n * sizeof(float), line))), n_(n) {
    std::fill_n(p_, n, 0.0F);
}
floats::~floats() {
    ::operator delete(p_, line);
}
void floats::fill(const std::vector<float>& from) {
    std::copy_n(from.begin(), std::min(from.size(), n_), p_);
}

std::vector<float> noise(std::size_t n) {
    std::vector<float> values(n);
    std::uint32_t state = 12345;
    for (float& v : values) {
        state = state * 1664525U + 1013904223U;
        v = static_cast<float>(state >> 8) / (1 << 23) - 1.0F;
    }
    return values;
}

void plain_mocomp(float* x, int nf, int nt, float f1, float df, float rh, const double* d) {
    for (int j = 0; j < nt; j++) {
        const double a1 = j > 0 ? d[j - 1] : 3 * d[0] - 3 * d[1] + d[2], a2 = d[j], a3 = d[j + 1];
        const double a4 = j < nt - 1 ? d[j + 2] : 3 * d[nt] - 3 * d[nt - 1] + d[nt - 2];
        double p = 0;
        for (int i = 0; i < nf; i++, p += rh / nf) {
            const double f = i * static_cast<double>(df) + f1;
            const double dd = -p * (p - 1) * (p - 2) / 6 * a1 + (p * p - 1) * (p - 2) / 2 * a2 -
                              p * (p + 1) * (p - 2) / 2 * a3 + p * (p * p - 1) / 6 * a4;
            const auto cycles = static_cast<float>(std::fmod(dd * f, 1.0));
            const float c = std::cos(6.2831853F * cycles), s = std::sin(6.2831853F * cycles);
            float* sample = x + 2 * (static_cast<std::size_t>(j) * nf + i);
            const float re = sample[0], im = sample[1];
            sample[0] = re * c - im * s;
            sample[1] = re * s + im * c;
        }
    }
}

namespace {

struct table {
    int n = 0, m = 0;
    std::vector<float> values;
    void serve(int samples) {
        if (n == samples) return;
        n = samples;
        m = std::min(IMGINT_TAPS, n / 2);
        values.assign(TABLE_PER_SAMPLE * (m + 2), 0.0F);
        tsinc(values.data(), m);
    }
    float at(float x) const {
        const float xx = x * TABLE_PER_SAMPLE;
        const auto i = static_cast<int>(xx);
        const float h = xx - static_cast<float>(i);
        return (1 - h) * values[i] + h * values[i + 1];
    }
};

void plain_imgint(const float* a, int nx, int ny, float x0, float y0, float* c) {
    static table rx, ry;
    rx.serve(nx);
    ry.serve(ny);
    const float xp = x0 - 1, yp = y0 - 1;
    const int ixp = static_cast<int>(xp), iyp = static_cast<int>(yp);
    float cr = 0, ci = 0;
    int iy = (iyp - ry.m + ny) % ny;
    float y = static_cast<float>(iyp - ry.m);
    for (int j = 1; j <= 2 * ry.m - 1; j++, y += 1) {
        const float ay = std::fabs(yp - y), gy = ry.at(ay);
        int ix = (ixp - rx.m + nx) % nx;
        float x = static_cast<float>(ixp - rx.m);
        for (int i = 1; i <= 2 * rx.m - 1; i++, x += 1) {
            const float ax = std::fabs(xp - x);
            if (static_cast<int>(ax) * static_cast<int>(ay) <= 40) {
                const float g = gy * rx.at(ax);
                const float* sample = a + 2 * (static_cast<std::size_t>(iy) * nx + ix);
                cr += g * sample[0];
                ci += g * sample[1];
            }
            if (++ix == nx) ix = 0;
        }
        if (++iy == ny) iy = 0;
    }
    c[0] = cr;
    c[1] = ci;
}

} // namespace

void plain_polarfor1(const float* s, int nf, int na, float f1, float df, float rc, float de, float da, int nx,
                     int ny, float dx, float dy, int ni, float c, float* z) {
    std::vector<float> table(10001);
    for (int k = 0; k <= 10000; k++) table[k] = static_cast<float>(std::sin(2 * std::numbers::pi * k / 8000));
    for (int k = 0; k < 2 * nx * ny; k++) z[k] = 0;
    const float b = 0.5F * df * nf, fc = f1 + b - 0.5F * df;
    const float a = std::sqrt(fc * fc - b * b) * std::tan(0.5F * na * da), rc2 = 2 * rc, cde = std::cos(de);
    for (int j = 0; j < na; j++) {
        const float th = (j - 0.5F * (na - 1)) * da, sth = std::sin(th), cth = std::cos(th);
        for (int i = 0; i < nf; i++) {
            const float f = f1 + i * df, u = f * sth / a, v = (f * cth - fc) / b, dsq = u * u + v * v;
            if (dsq >= 1) continue;
            const float w = f / fc * cirwght(dsq), con1 = 16000 * f / c;
            const float ar = w * s[2 * (j * nf + i)], ai = w * s[2 * (j * nf + i) + 1];
            float* to = z;
            for (int iy = 0; iy < ny; iy++) {
                const float y0 = -(ny / 2) * dy + iy * dy, con2 = 16000 * fc * y0 / c;
                for (int ix = 0; ix < nx; ix++, to += 2) {
                    const float x0 = -(nx / 2) * dx + ix * dx;
                    float dr = cde * (cth * y0 - sth * x0);
                    if (ni > 1) {
                        const float rr = rc2 * dr + x0 * x0 + y0 * y0;
                        for (int k = 1; k < ni; k++) dr = rr / (dr + rc2);
                    }
                    float aa = std::fmod(dr * con1 - con2, 8000.0F);
                    if (aa < 0) aa += 8000;
                    const int ia = static_cast<int>(std::lround(aa));
                    const float br = table[ia + 2000], bi = table[ia];
                    to[0] += br * ar - bi * ai;
                    to[1] += bi * ar + br * ai;
                }
            }
        }
    }
}

void plain_pk2dpos(const float* c, int nx, int ny, int k0, int ni, float* xp, float* yp, float* ap) {
    int iy = (k0 - 1) / nx, ix = k0 - 1 - iy * nx;
    float pmx = 0;
    for (float plast = 0;; plast = pmx) {
        pmx = 0;
        int bx = ix, by = iy;
        for (int j = std::max(iy - 1, 0); j <= std::min(iy + 1, ny - 1); j++) {
            for (int i = std::max(ix - 1, 0); i <= std::min(ix + 1, nx - 1); i++) {
                const float* s = c + 2 * (static_cast<std::size_t>(j) * nx + i);
                const float p = s[0] * s[0] + s[1] * s[1];
                if (p > pmx) pmx = p, bx = i, by = j;
            }
        }
        if (pmx <= plast) break;
        ix = bx, iy = by;
    }
    float x0 = static_cast<float>(ix + 1), y0 = static_cast<float>(iy + 1), d = 0.5F;
    for (int step = 0; step < ni; step++, d *= 0.5F) {
        pmx = 0;
        for (int j = -1; j <= 1; j++) {
            for (int i = -1; i <= 1; i++) {
                const float x = static_cast<float>(i) * d + x0, y = static_cast<float>(j) * d + y0;
                float v[2];
                plain_imgint(c, nx, ny, x, y, v);
                const float p = v[0] * v[0] + v[1] * v[1];
                if (p > pmx) pmx = p, *xp = x, *yp = y;
            }
        }
        x0 = *xp;
        y0 = *yp;
    }
    *ap = std::sqrt(pmx);
}

void plain_peaks(const float* a, int nx, int ny, int npm, float amn, int* lp, int* np) {
    int m = 0;
    auto at = [&](int i, int j) { return a[static_cast<std::size_t>((j + ny) % ny) * nx + (i + nx) % nx]; };
    for (int j = 0; j < ny; j++) {
        for (int i = 0; i < nx; i++) {
            const float aa = at(i, j);
            if (!(aa > amn) || aa <= at(i - 1, j) || aa <= at(i + 1, j) || aa <= at(i, j - 1) ||
                aa <= at(i, j + 1) || aa <= at(i - 1, j - 1) || aa <= at(i + 1, j - 1) ||
                aa <= at(i - 1, j + 1) || aa <= at(i + 1, j + 1))
                continue;
            int l = 0;
            while (l < m && aa < a[lp[l] - 1]) l++;
            for (int k = std::min(m, npm - 1); k > l; k--) lp[k] = lp[k - 1];
            lp[l] = j * nx + i + 1;
            m = std::min(m + 1, npm);
        }
    }
    *np = m;
}

} // namespace norva::bench
