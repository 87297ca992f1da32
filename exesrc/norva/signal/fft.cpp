// The transform family: lengths, signs, strides and stops. The transform itself is in fft_plan.cpp.
#include "signal/fft.h"

#include "fft_grid.h"
#include "fft_plan.h"
#include "signal/vector.h"
#include "zuvsys/stop.h"

#include <cstdlib>
#include <cstring>
#include <vector>

namespace norva {
namespace {

bool power_of_two(int n) {
    return n > 0 && (n & (n - 1)) == 0;
}

// What gfft demands; sign 0 stands for a direction that is left out.
void check_mixed(int n, int sign) {
    if (std::abs(sign) > 1 || (sign != 0 && n > GFFT_MAX_MIXED && !power_of_two(n))) stop("STOP IN GFFT");
}

} // namespace

void gfft(float* a, int n, int is) {
    if (is == 0) stop("STOP IN GFFT");
    check_mixed(n, is);
    transform(a, n, is);
}

void gfft_padded(const float* in, int used, float* out, int n, int is) {
    if (is == 0) stop("STOP IN GFFT");
    check_mixed(n, is);
    if (n > 1)
        transform(plan_for(n), in, used, out, is);
    else if (n == 1)
        std::memcpy(out, in, 2 * sizeof(float));
}

void cfft(float* a, int n, int key) {
    if (!power_of_two(n)) stop("STOP IN CFFT");
    transform(a, n, key >= 0 ? +1 : -1);
}

void fft2(float* a, float* b, int nx, int key) {
    if (nx <= 1) return;
    if (!power_of_two(nx)) stop("STOP IN FFT2");
    int sign = key >= 0 ? +1 : -1;
    std::size_t stride = std::abs(key);
    if (stride == 2 && b == a + 1) {
        transform(a, nx, sign);
        return;
    }
    std::vector<float> work(2 * static_cast<std::size_t>(nx));
    for (int i = 0; i < nx; i++) {
        work[2 * i] = a[i * stride];
        work[2 * i + 1] = b[i * stride];
    }
    transform(work.data(), nx, sign);
    for (int i = 0; i < nx; i++) {
        a[i * stride] = work[2 * i];
        b[i * stride] = work[2 * i + 1];
    }
}

void fourt(float* datar, float* datai, const int* nn, int ndim, int ifrwd, int icplx, float*, float*) {
    if (ndim < 1) return;
    if (ndim > 1 || icplx != 1) stop("STOP IN FOURT");
    int n = nn[0];
    if (n <= 1) return;
    std::vector<float> work(2 * static_cast<std::size_t>(n));
    for (int i = 0; i < n; i++) {
        work[2 * i] = datar[i];
        work[2 * i + 1] = datai[i];
    }
    transform(work.data(), n, ifrwd == 0 ? +1 : -1);
    for (int i = 0; i < n; i++) {
        datar[i] = work[2 * i];
        datai[i] = work[2 * i + 1];
    }
}

void check_grid(int nx, int ny, int isx, int isy) {
    if (ny > FFT2D_MAX_NY) stop("STOP IN FFT2D");
    check_mixed(nx, isx);
    check_mixed(ny, isy);
}

void fft2d(float* a, int nx, int ny, int isx, int isy) {
    check_grid(nx, ny, isx, isy);
    if (isx != 0) transform_rows(a, nx, ny, isx);
    if (isy != 0) transform_columns(a, nx, ny, 0, nx, isy);
}

// c = a rotated by k complex samples to the front, 0 <= k <= n.
static void copy_rotated(const float* a, int n, int k, float* c) {
    std::memcpy(c, a + 2 * k, 2 * sizeof(float) * static_cast<std::size_t>(n - k));
    std::memcpy(c + 2 * (n - k), a, 2 * sizeof(float) * static_cast<std::size_t>(k));
}

void transf(const float* a, int n, int idc, float* c, int kss) {
    if (n < 1) return;
    copy_rotated(a, n, n / 2, c);
    fft2(c, c + 1, n, 2 * (kss == 0 ? -1 : kss));
    shaft(c, 2 * n, 2 * (idc % n));
}

void transi(float* a, int n, int idc, const float* c, int kss) {
    if (n < 1) return;
    copy_rotated(c, n, (idc % n + n) % n, a);
    fft2(a, a + 1, n, 2 * (kss == 0 ? +1 : -kss));
    const float scale = 1.0F / static_cast<float>(n);
    for (int k = 0; k < 2 * n; k++) a[k] *= scale;
    shaft(a, 2 * n, 2 * (n / 2));
}

} // namespace norva
