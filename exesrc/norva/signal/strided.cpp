// Array kernels with a stride, which is the distance of the first two elements of each array.
#include "signal/vector.h"

#include "zuvsys/stop.h"

#include <cstddef>
#include <utility>

namespace norva {
namespace {

void check_count(int n) {
    if (n < 0) stop(" STOP IN GPROC.....N must be positive");
}

// One array of a strided kernel.
template <class T> struct lane {
    T* first;
    std::ptrdiff_t stride;
    lane(T* first_element, T* second_element)
        : first(first_element), stride(second_element - first_element) {}
    T& operator[](int k) const { return first[k * stride]; }
};

} // namespace

float sumg(int n, const float* a, const float* a2) {
    check_count(n);
    lane x(a, a2);
    double sum = 0;
    for (int k = 0; k < n; k++) sum += x[k];
    return static_cast<float>(sum);
}

float dotg(int n, const float* a, const float* a2, const float* b, const float* b2) {
    check_count(n);
    lane x(a, a2), y(b, b2);
    double sum = 0;
    for (int k = 0; k < n; k++) sum += static_cast<double>(x[k]) * y[k];
    return static_cast<float>(sum);
}

void swapg(int n, float* a, float* a2, float* b, float* b2) {
    check_count(n);
    lane x(a, a2), y(b, b2);
    for (int k = 0; k < n; k++) std::swap(x[k], y[k]);
}

void asumg(int n, const float* a, const float* a2, const float* b, const float* b2, float* c, float* c2) {
    check_count(n);
    lane x(a, a2), y(b, b2);
    lane z(c, c2);
    for (int k = 0; k < n; k++) z[k] = x[k] + y[k];
}

void prodg(int n, const float* a, const float* a2, const float* b, const float* b2, float* c, float* c2) {
    check_count(n);
    lane x(a, a2), y(b, b2);
    lane z(c, c2);
    for (int k = 0; k < n; k++) z[k] = x[k] * y[k];
}

void powrg(int n, const float* a, const float* a2, const float* b, const float* b2, float* c, float* c2) {
    check_count(n);
    lane x(a, a2), y(b, b2);
    lane z(c, c2);
    for (int k = 0; k < n; k++) z[k] = x[k] * x[k] + y[k] * y[k];
}

void xmitg(int n, const float* a, const float* a2, float* b, float* b2) {
    check_count(n);
    lane x(a, a2);
    lane z(b, b2);
    for (int k = 0; k < n; k++) z[k] = x[k];
}

} // namespace norva
