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

// n complex samples, every second one negative, the first one times `sign`. A rotation by half the length on
// one side of a transform is such an alternation on the other.
static void copy_alternating(const float* a, int n, float sign, float* c) {
    int k = 0;
    for (; k + 2 <= n; k += 2) {
        c[2 * k] = sign * a[2 * k];
        c[2 * k + 1] = sign * a[2 * k + 1];
        c[2 * k + 2] = -sign * a[2 * k + 2];
        c[2 * k + 3] = -sign * a[2 * k + 3];
    }
    if (k < n) {
        c[2 * k] = sign * a[2 * k];
        c[2 * k + 1] = sign * a[2 * k + 1];
    }
}

// The same, read from sample k on around the end, 0 <= k < n. The sign belongs to the place that a sample is
// read from, or comes to.
enum class alternation { from, to };
static void copy_around(const float* a, int n, int k, alternation sign_of, float* c) {
    const auto sign = [](int place) { return place % 2 == 0 ? 1.0F : -1.0F; };
    const bool from = sign_of == alternation::from;
    copy_alternating(a + 2 * k, n - k, from ? sign(k) : 1.0F, c);
    copy_alternating(a, k, from ? 1.0F : sign(n - k), c + 2 * (n - k));
}

static float* transform_room(int n) {
    static thread_local std::vector<float> room;
    if (room.size() < 2 * static_cast<std::size_t>(n)) room.resize(2 * static_cast<std::size_t>(n));
    return room.data();
}

void transf(const float* a, int n, int idc, float* c, int kss) {
    if (n < 1) return;
    if (!power_of_two(n)) stop("STOP IN FFT2");
    float* work = transform_room(n);
    gfft_padded(a, n, work, n, kss == 0 ? -1 : kss);
    copy_around(work, n, (n - idc % n) % n, alternation::from, c);
}

void transi(float* a, int n, int idc, const float* c, int kss) {
    if (n < 1) return;
    if (!power_of_two(n)) stop("STOP IN FFT2");
    float* work = transform_room(n);
    copy_around(c, n, (idc % n + n) % n, alternation::to, work);
    gfft_padded(work, n, a, n, kss == 0 ? +1 : -kss);
    const float scale = 1.0F / static_cast<float>(n);
    for (int k = 0; k < 2 * n; k++) a[k] *= scale;
}

} // namespace norva
