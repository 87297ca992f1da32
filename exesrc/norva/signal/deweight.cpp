// The largest amplitude of a segment after its weight has been taken out.
#include "signal/weight.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace norva {
namespace {

// The weights that both routines build, by element number from 1. What one call leaves is what a call that
// builds none finds.
thread_local std::vector<float> work;

float* element(int k) {
    return &work[k];
}

void make_room(int last) {
    if (static_cast<std::size_t>(std::max(last, 0)) + 1 > work.size()) work.resize(std::max(last, 0) + 1);
}

float work_at(int k) {
    return k >= 1 && k < static_cast<int>(work.size()) ? work[k] : 0.0F;
}

} // namespace

void deham2(int limit1, int, int lendw, const float* amp, int startx, int endx, const char* dewt, int*,
            int lt1, int lt2, float* ampmax) {
    const int istart = startx > lt1 ? 1 : lt1 - startx + 1;
    const int iend = (lt2 > endx ? endx : lt2) - startx + 1;
    if (dewt && dewt[0] == 'H' && limit1 >= 1 && lendw > 0) {
        make_room(limit1 + lendw - 1);
        hamwt(element(limit1), lendw, 0);
    }
    *ampmax = 0;
    float amptmp = 0;
    for (int i = istart; i <= iend; i++) {
        if (work_at(i) != 0) amptmp = amp[i - 1] / work_at(i);
        *ampmax = std::max(*ampmax, amptmp);
    }
}

void detay2(int limit1, int limit2, int lendw, const float* amp, const char* dtype, int startx, int endx,
            int lt1, int lt2, float* ampmax) {
    const bool after = startx > limit1;
    const int starta = after ? 1 : limit1 - startx + 1;
    const int startw = after ? startx - limit1 + 1 : 1;
    const int istart = startx > lt1 ? 1 : lt1 - startx + 1;
    const int iend = (lt2 > endx ? endx : lt2) - startx + 1;
    const bool tabulated = dtype && (dtype[0] == 'A' || dtype[0] == 'a');
    make_room(limit2);
    for (int i = std::max(limit1, 1); i <= limit2; i++) {
        *element(i) = tabulated ? asarwt(i - limit1 + 1, lendw) : taylor(i - limit1 + 1, lendw);
    }
    *ampmax = 0;
    for (int i = istart; i <= iend; i++) {
        float amptmp = amp[i - 1] / work_at(i - starta + startw);
        *ampmax = std::max(*ampmax, amptmp);
    }
}

} // namespace norva
