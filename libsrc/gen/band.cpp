#include "gen/band.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace norva {
namespace {

// First element of a walk of n elements by inc.
std::ptrdiff_t begin_of(int n, int inc) {
    return inc < 0 ? static_cast<std::ptrdiff_t>(1 - n) * inc : 0;
}

} // namespace

double ddot(int n, const double* dx, int incx, const double* dy, int incy) {
    double sum = 0;
    std::ptrdiff_t ix = begin_of(n, incx), iy = begin_of(n, incy);
    for (int k = 0; k < n; k++, ix += incx, iy += incy) sum += dx[ix] * dy[iy];
    return sum;
}

void daxpy(int n, double da, const double* dx, int incx, double* dy, int incy) {
    if (da == 0) return;
    std::ptrdiff_t ix = begin_of(n, incx), iy = begin_of(n, incy);
    for (int k = 0; k < n; k++, ix += incx, iy += incy) dy[iy] += da * dx[ix];
}

void dscal(int n, double da, double* dx, int incx) {
    if (incx < 1) return;
    for (int k = 0; k < n; k++) dx[static_cast<std::ptrdiff_t>(k) * incx] *= da;
}

int idamax(int n, const double* dx, int incx) {
    if (n < 1 || incx < 1) return 0;
    int at = 0;
    for (int k = 1; k < n; k++) {
        if (std::fabs(dx[static_cast<std::ptrdiff_t>(k) * incx]) >
            std::fabs(dx[static_cast<std::ptrdiff_t>(at) * incx]))
            at = k;
    }
    return at + 1;
}

// Columns are kept with the main diagonal in row m = ml + mu (from 0). An exchange of rows fills up to ml
// diagonals above the band, for which the first ml rows stand ready.
void dgbfa(double* abd, int lda, int n, int ml, int mu, int* ipvt, int* info) {
    const int m = ml + mu;
    auto at = [&](int row, int col) { return abd + static_cast<std::ptrdiff_t>(col) * lda + row; };
    *info = 0;
    for (int j = 0; j < n; j++) std::fill(at(0, j), at(ml, j), 0.0);
    int reach = 0; // last column that rows already met extend to
    for (int k = 0; k < n; k++) {
        const int below = std::min(ml, n - 1 - k);
        const int down = idamax(below + 1, at(m, k), 1) - 1; // pivot row, counted from row k
        ipvt[k] = k + down + 1;
        if (*at(m + down, k) == 0) {
            *info = k + 1;
            continue;
        }
        std::swap(*at(m + down, k), *at(m, k));
        dscal(below, -1 / *at(m, k), at(m + 1, k), 1);
        reach = std::min(std::max(reach, ipvt[k] - 1 + mu), n - 1);
        for (int j = k + 1; j <= reach; j++) {
            const int row = m - (j - k); // row k of the matrix in column j
            std::swap(*at(row + down, j), *at(row, j));
            daxpy(below, *at(row, j), at(m + 1, k), 1, at(row + 1, j), 1);
        }
    }
}

void dgbsl(const double* abd, int lda, int n, int ml, int mu, const int* ipvt, double* b, int job) {
    const int m = ml + mu;
    auto at = [&](int row, int col) { return abd + static_cast<std::ptrdiff_t>(col) * lda + row; };
    if (job == 0) {
        for (int k = 0; k + 1 < n; k++) { // L y = b
            std::swap(b[k], b[ipvt[k] - 1]);
            daxpy(std::min(ml, n - 1 - k), b[k], at(m + 1, k), 1, b + k + 1, 1);
        }
        for (int k = n - 1; k >= 0; k--) { // U x = y
            b[k] /= *at(m, k);
            const int above = std::min(k, m);
            daxpy(above, -b[k], at(m - above, k), 1, b + k - above, 1);
        }
        return;
    }
    for (int k = 0; k < n; k++) { // transpose(U) y = b
        const int above = std::min(k, m);
        b[k] = (b[k] - ddot(above, at(m - above, k), 1, b + k - above, 1)) / *at(m, k);
    }
    for (int k = n - 2; k >= 0; k--) { // transpose(L) x = y
        b[k] += ddot(std::min(ml, n - 1 - k), at(m + 1, k), 1, b + k + 1, 1);
        std::swap(b[k], b[ipvt[k] - 1]);
    }
}

} // namespace norva
