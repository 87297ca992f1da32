#include "gen/pksearch.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace norva {
namespace {

// Keeps at most mx samples in falling order of height, ties behind earlier entries.
void addpk(std::vector<int>& list, int mx, const float* y, int i) {
    auto lower = [&](int k) { return y[k] < y[i]; };
    list.insert(std::find_if(list.begin(), list.end(), lower), i);
    if (static_cast<int>(list.size()) > mx) list.pop_back();
}

} // namespace

int ixcir(int i, int n) {
    i %= n;
    return i < 0 ? i + n : i;
}

void curveshape(const float* y, int n, int i, int* sl, int* sr, int* nl, int* nr) {
    auto side = [&](int step, int* slope, int* count) {
        *slope = 1;
        for (*count = 0; *count < n; ++*count) {
            const float there = y[ixcir(i + step * (*count + 1), n)];
            if (there == y[i]) continue;
            *slope = there < y[i] ? -1 : 1;
            return;
        }
    };
    side(-1, sl, nl);
    side(+1, sr, nr);
}

int peakfit3(const float* y, float* xoff, float* ypk, float* width) {
    const float a = (y[2] + y[0]) * 0.5F - y[1], b = (y[2] - y[0]) * 0.5F;
    *xoff = 0;
    *ypk = y[1];
    *width = 0;
    if (a == 0) return -1;
    *xoff = -0.5F * b / a;
    *ypk = a * *xoff * *xoff + b * *xoff + y[1];
    const float d = b * b - 4 * a * (y[1] - 0.5F * *ypk);
    if (d >= 0) *width = std::fabs(std::sqrt(d) / a);
    return 1;
}

int pksearch(const float* y, int n, int mx, int i0, int i1, float* xout, float* yout) {
    if (n < 4 || mx < 1) return 0;
    const long long distance = static_cast<long long>(i1) - i0;
    const auto steps = static_cast<int>(std::min<long long>(std::llabs(distance) + 1, n));
    std::vector<int> list;
    int i = ixcir(i0, n);
    for (int k = 0; k < steps; k++, i = ixcir(i + (distance < 0 ? -1 : 1), n)) {
        int sl = 0, sr = 0, nl = 0, nr = 0;
        curveshape(y, n, i, &sl, &sr, &nl, &nr);
        if (sl < 0 && sr < 0 && (nl == nr || nl + 1 == nr)) addpk(list, mx, y, i);
    }
    for (std::size_t p = 0; p < list.size(); p++) {
        const int k = list[p];
        const float three[3] = {y[ixcir(k - 1, n)], y[k], y[ixcir(k + 1, n)]};
        float xoff = 0, width = 0;
        peakfit3(three, &xoff, &yout[p], &width);
        xout[p] = static_cast<float>(k) + xoff;
    }
    return static_cast<int>(list.size());
}

} // namespace norva
