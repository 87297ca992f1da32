// Changing the size of a data set through its transform.
#include "signal/resize.h"

#include "fft_grid.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace norva {
namespace {

constexpr std::size_t sample = 2 * sizeof(float);

// Copies `head` samples to the start and `tail` samples to the end of a row, from the two ends of another;
// the rows may overlap as long as neither end of `to` lies before its source.
void spread_row(const float* from, int n, float* to, int m, int head, int tail) {
    std::memmove(to + 2 * static_cast<std::ptrdiff_t>(m - tail),
                 from + 2 * static_cast<std::ptrdiff_t>(n - tail), tail * sample);
    std::memmove(to, from, head * sample);
    std::fill(to + 2 * static_cast<std::ptrdiff_t>(head), to + 2 * static_cast<std::ptrdiff_t>(m - tail),
              0.0F);
}

} // namespace

void zfil2d(float* a, int nx, int ny, int mx, int my) {
    if (mx < nx || my < ny) stop("STOP IN ZFIL2D");
    if (mx == nx && my == ny) return;
    const int nx1 = (nx + 1) / 2, nx2 = nx - nx1, ny1 = (ny + 1) / 2, ny2 = ny - ny1;
    auto row = [&](int j, int n) { return a + 2 * static_cast<std::ptrdiff_t>(j) * n; };
    // From the last row backward, so that no sample is overwritten before it is read.
    for (int j = my - 1; j >= 0; j--) {
        if (j >= my - ny2)
            spread_row(row(j - my + ny, nx), nx, row(j, mx), mx, nx1, nx2);
        else if (j < ny1)
            spread_row(row(j, nx), nx, row(j, mx), mx, nx1, nx2);
        else
            std::fill(row(j, mx), row(j + 1, mx), 0.0F);
    }
}

void decimate(float* a, int nf, int nt, int mf, int mt) {
    if (mf > nf || mt > nt || mf <= 0 || mt <= 0) stop("STOP IN DECIMATE");
    if (mf == nf && mt == nt) return;
    const int isf = mf == nf ? 0 : 1, ist = mt == nt ? 0 : 1;
    check_grid(nf, nt, isf, ist);
    check_grid(mf, mt, isf, ist);
    // The low frequencies lie at both ends of a row, and of a column; what is cut off need not be transformed
    // along the other direction.
    const int head = (mf + 1) / 2, tail = mf - head, early = (mt + 1) / 2;
    if (isf) transform_rows(a, nf, nt, isf);
    if (ist) {
        transform_columns(a, nf, nt, 0, head, ist);
        transform_columns(a, nf, nt, nf - tail, nf, ist);
    }
    // Packed from the front: no sample is overwritten before it is read.
    const auto scale = static_cast<float>(1.0 / (static_cast<double>(nf) * nt));
    for (int j = 0; j < mt; j++) {
        const float* from = a + 2 * static_cast<std::ptrdiff_t>(j < early ? j : nt - mt + j) * nf;
        float* to = a + 2 * static_cast<std::ptrdiff_t>(j) * mf;
        for (int i = 0; i < 2 * head; i++) to[i] = from[i] * scale;
        from += 2 * static_cast<std::ptrdiff_t>(nf - mf);
        for (int i = 2 * head; i < 2 * mf; i++) to[i] = from[i] * scale;
    }
    if (isf) transform_rows(a, mf, mt, -isf);
    if (ist) transform_columns(a, mf, mt, 0, mf, -ist);
}

} // namespace norva
