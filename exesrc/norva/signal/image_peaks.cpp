// Local maxima of a real image.
#include "signal/peak.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace norva {
namespace {

// List of linear indices in falling order of amplitude, at most `room` of them in use.
class falling_list {
public:
    falling_list(const float* a, int* lp, int room) : a_(a), lp_(lp), room_(room) {}
    void enter(int index) {
        const float value = amplitude(index);
        int place = 0;
        while (place < used_ && !(value >= amplitude(lp_[place]))) place++;
        // One entry beyond the room is written too: what is too small for a full list goes there.
        const int last = std::min(used_, room_ - 1);
        for (int i = last; i > place; i--) lp_[i] = lp_[i - 1];
        lp_[place] = index;
        used_ = std::min(used_ + 1, room_);
    }
    int used() const { return used_; }

private:
    float amplitude(int index) const { return a_[index - 1]; }
    const float* a_;
    int* lp_;
    int room_;
    int used_ = 0;
};

} // namespace

void peaks(const float* a, int nx, int ny, int npm, float amn, int* lp, int* np) {
    falling_list list(a, lp, std::max(npm, 0));
    for (int j = 0; j < ny; j++) {
        const float* row = a + static_cast<std::size_t>(j) * nx;
        const float* below = a + static_cast<std::size_t>(j == 0 ? ny - 1 : j - 1) * nx;
        const float* above = a + static_cast<std::size_t>(j == ny - 1 ? 0 : j + 1) * nx;
        auto is_top = [=](int i, int left, int right) {
            const float aa = row[i];
            return (aa > amn) & (aa > row[left]) & (aa > row[right]) & (aa > below[i]) & (aa > above[i]) &
                   (aa > below[left]) & (aa > below[right]) & (aa > above[left]) & (aa > above[right]);
        };
        // Most blocks of samples are low. In the others, but for the columns at the edge, all are compared
        // without branches, so that several are at once.
        constexpr int block = 32;
        for (int begin = 0; begin < nx; begin += block) {
            const int end = std::min(begin + block, nx);
            int high = 0;
            for (int i = begin; i < end; i++) high += row[i] > amn ? 1 : 0;
            if (high == 0) continue;
            std::array<int, block> top; // greater than all eight neighbours
            for (int i = std::max(begin, 1); i < std::min(end, nx - 1); i++)
                top[i - begin] = is_top(i, i - 1, i + 1);
            if (begin == 0) top[0] = is_top(0, nx - 1, nx > 1 ? 1 : 0);
            if (end == nx && nx > 1) top[nx - 1 - begin] = is_top(nx - 1, nx - 2, 0);
            for (int i = begin; i < end; i++) {
                if (top[i - begin]) list.enter(j * nx + i + 1);
            }
        }
    }
    *np = list.used();
}

} // namespace norva
