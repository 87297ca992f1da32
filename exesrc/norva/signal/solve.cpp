// Dense systems of equations, in single and double precision.
#include "signal/solve.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace norva {
namespace {

// Brings the n by n matrix to upper triangular form by rows, each with the largest element of its column as
// pivot; b, when given, goes along. Returns the sign of the row exchanges, 0 when the matrix is singular.
template <class T> int triangular(T* a, T* b, int n, int nn) {
    auto at = [&](int i, int j) -> T& { return a[static_cast<std::size_t>(j) * nn + i]; };
    int sign = 1;
    for (int k = 0; k < n; k++) {
        int pivot = k;
        for (int i = k + 1; i < n; i++) {
            if (std::fabs(at(i, k)) > std::fabs(at(pivot, k))) pivot = i;
        }
        if (!(std::fabs(at(pivot, k)) > 0)) return 0;
        if (pivot != k) {
            for (int j = k; j < n; j++) std::swap(at(k, j), at(pivot, j));
            if (b) std::swap(b[k], b[pivot]);
            sign = -sign;
        }
        for (int i = k + 1; i < n; i++) {
            const T factor = at(i, k) / at(k, k);
            for (int j = k; j < n; j++) at(i, j) -= factor * at(k, j);
            if (b) b[i] -= factor * b[k];
        }
    }
    return sign;
}

template <class T> void solve(T* a, T* b, int n, int nn, T* flag) {
    *flag = triangular(a, b, n, nn) == 0 ? T(1) : T(0);
    if (*flag != 0) return;
    for (int i = n - 1; i >= 0; i--) {
        for (int j = i + 1; j < n; j++) b[i] -= a[static_cast<std::size_t>(j) * nn + i] * b[j];
        b[i] /= a[static_cast<std::size_t>(i) * nn + i];
    }
}

} // namespace

void simeq(float* a, float* b, int n, int nn, float* flag) {
    solve(a, b, n, nn, flag);
}
void dsimeq(double* a, double* b, int n, int nn, double* flag) {
    solve(a, b, n, nn, flag);
}

double determ(double* array, int norder) {
    double product = triangular<double>(array, nullptr, norder, norder);
    for (int k = 0; k < norder; k++) product *= array[static_cast<std::size_t>(k) * norder + k];
    return product;
}

} // namespace norva
