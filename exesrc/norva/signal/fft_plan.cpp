// Self-sorting mixed-radix transform. A pass of radix R takes the sub-length n to n/R and the run s to s*R:
//
//   y[q + s(R p + k)] = exp(-2 pi i k p / n) * sum j=0..R-1 of x[q + s(p + j n/R)] exp(-2 pi i j k / R),
//   p = 0..n/R-1, q = 0..s-1
//
// after which the next pass works on y.  Source: C. Van Loan, Computational Frameworks for the FFT
// (1992), 1.7.
#include "fft_plan.h"

#include <cmath>
#include <complex>
#include <memory>
#include <mutex>
#include <numbers>
#include <unordered_map>
#include <vector>

namespace norva {
namespace {

using cpx = std::complex<float>;

struct plan {
    std::vector<int> radices;
    std::vector<cpx> w; // w[k] = exp(-2 pi i k / N)
};

plan make_plan(int n) {
    plan p;
    int rest = n;
    for (int r = 2; rest > 1; r++) {
        if (r * r > rest) r = rest;
        while (rest % r == 0) {
            p.radices.push_back(r);
            rest /= r;
        }
    }
    for (int k = 0; k < n; k++) {
        double arg = -2 * std::numbers::pi * k / n;
        p.w.emplace_back(static_cast<float>(std::cos(arg)), static_cast<float>(std::sin(arg)));
    }
    return p;
}

const plan& plan_for(int n) {
    static std::mutex lock;
    static std::unordered_map<int, std::unique_ptr<plan>> plans;
    std::lock_guard guard(lock);
    std::unique_ptr<plan>& p = plans[n];
    if (!p) p = std::make_unique<plan>(make_plan(n));
    return *p;
}

} // namespace

void transform(float* a, int n, int sign) {
    if (n < 2) return;
    const plan& pl = plan_for(n);
    std::vector<cpx> x(n), y(n), t;
    for (int i = 0; i < n; i++) x[i] = cpx(a[2 * i], sign < 0 ? a[2 * i + 1] : -a[2 * i + 1]);
    int sub = n, s = 1;
    for (int r : pl.radices) {
        int m = sub / r;
        t.resize(r);
        for (int p = 0; p < m; p++) {
            for (int q = 0; q < s; q++) {
                for (int j = 0; j < r; j++) t[j] = x[q + s * (p + j * m)];
                for (int k = 0; k < r; k++) {
                    cpx sum = 0;
                    for (int j = 0; j < r; j++)
                        sum += t[j] * pl.w[static_cast<long long>(n / r) * (j * k % r)];
                    y[q + s * (r * p + k)] = sum * pl.w[static_cast<long long>(s) * k * p % n];
                }
            }
        }
        x.swap(y);
        sub = m;
        s *= r;
    }
    for (int i = 0; i < n; i++) {
        a[2 * i] = x[i].real();
        a[2 * i + 1] = sign < 0 ? x[i].imag() : -x[i].imag();
    }
}

} // namespace norva
