// Time search by interpolation.
#include "fileio/filefind.h"

#include <algorithm>
#include <cmath>

namespace norva {

int filefind(_zuvfile* file, double tme, std::int64_t& iplace, std::int64_t n0, std::int64_t n1,
             pultime pultme) {
    auto answer = [&](std::int64_t element) {
        iplace = element;
        return 1;
    };
    std::int64_t s0 = n0, s1 = n1;
    double t0 = 0.0, t1 = 0.0;
    if (int status = pultme(file, s0, t0); status != 1) return status;
    if (int status = pultme(file, s1, t1); status != 1) return status;

    // Each round takes an element off the span at least when times rise; a file whose times do not ends the
    // search.
    for (std::int64_t rounds = n1 - n0 + 2; rounds > 0; rounds--) {
        if (tme <= t0) return answer(s0);
        if (tme == t1) return answer(s1);
        if (tme > t1) return answer(s1 + 1);
        std::int64_t n = s1 - s0 + 1;
        if (n < 2) return answer(s0 + 1);
        double tp = (t1 - t0) / static_cast<double>(n - 1);
        if (!(tp >= 0.0)) return -1;
        if (tp == 0.0) {
            while (s0 < n1 && tme > t0)
                if (int status = pultme(file, ++s0, t0); status != 1) return status;
            return answer(s0);
        }

        double steps = std::floor((tme - t0) / tp);
        if (!(steps > 0.0)) steps = 0.0; // not-a-number, from infinite times
        std::int64_t g0 = s0 + static_cast<std::int64_t>(std::min(steps, static_cast<double>(n1 - s0)));
        g0 = std::clamp(g0, n0, n1);
        double tg0 = 0.0, tg1 = 0.0;
        if (int status = pultme(file, g0, tg0); status != 1) return status;
        if (tme == tg0) return answer(g0);
        std::int64_t g1 = tg0 > tme ? std::max(g0 - 1, n0) : std::min(g0 + 1, n1);
        if (int status = pultme(file, g1, tg1); status != 1) return status;
        if (tg0 > tme) {
            if (tg1 < tme) return answer(g0);
            s1 = g1;
            t1 = tg1;
        } else {
            if (tg1 >= tme) return answer(g1);
            s0 = g1;
            t0 = tg1;
        }
    }
    return -1;
}

} // namespace norva
