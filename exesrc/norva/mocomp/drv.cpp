// Derivatives of equally spaced samples by differences.
#include "mocomp/mocomp.h"

#include "zuvsys/stop.h"

#include <array>
#include <cmath>

namespace norva {
namespace {

// Central differences, written from the highest index down to the lowest: point i + half goes first.
struct stencil {
    int half; // points on each side
    double scale;
    std::array<double, 9> c;
};
constexpr std::array<stencil, 7> central = {{
    {1, 0.5, {1, 0, -1}},
    {1, 1.0, {1, -2, 1}},
    {2, 0.5, {1, -2, 0, 2, -1}},
    {2, 1.0, {1, -4, 6, -4, 1}},
    {3, 0.5, {1, -4, 5, 0, -5, 4, -1}},
    {3, 1.0, {1, -6, 15, -20, 15, -6, 1}},
    {4, 0.5, {1, -6, 14, -14, 0, 14, -14, 6, -1}},
}};

// Difference of `order` over the points first..first+order: sum of (-1)^m binomial(order, m)
// a[first+order-m].
double one_sided(const double* a, int first, int order) {
    double sum = 0, c = 1;
    for (int m = 0; m <= order; m++) {
        sum += c * a[first + order - m];
        c = -c * (order - m) / (m + 1);
    }
    return sum;
}

} // namespace

void drv(const double* a, double* b, double dt, int ndrv, int npts) {
    if (ndrv < 1 || ndrv > 7) stop("stop in drv");
    const stencil& st = central[ndrv - 1];
    double divisor = std::pow(dt, ndrv);
    for (int i = 0; i < npts; i++) {
        double difference = 0;
        if (i < st.half) {
            difference = i + ndrv < npts ? one_sided(a, i, ndrv) : 0.0;
        } else if (i >= npts - st.half) {
            difference = i >= ndrv ? one_sided(a, i - ndrv, ndrv) : 0.0;
        } else {
            for (int m = 0; m <= 2 * st.half; m++) difference += st.c[m] * a[i + st.half - m];
            difference *= st.scale;
        }
        b[i] = difference / divisor;
    }
}

} // namespace norva
