// Range profiles.
#include "profiles/rngpro.h"

#include "signal/fft.h"
#include "signal/progress.h"
#include "signal/vector.h"
#include "signal/weight.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace norva {

void rngpro(const float* a, int nf, int nt, int nr, int is, float* r1, float* dr, float* b, float* p) {
    if (nr > RNGPRO_MAX_NR) stop("STOP #2 IN RNGPRO");
    if (nf > RNGPRO_MAX_NF) stop("STOP #3 IN RNGPRO");
    *dr = static_cast<float>(nf) / static_cast<float>(nr);
    *r1 = nr % 2 == 0 ? static_cast<float>(-nf * 0.5) : static_cast<float>(-(nr / 2) * (nf / (nr * 1.0)));

    std::vector<float> w(nf), work(2 * static_cast<std::size_t>(nr));
    ham(w.data(), nf);
    const int used = std::min(nf, nr), half = nr / 2;
    const int nskip = std::max(1, nt / 50);
    for (int j = 1; j <= nt; j++) {
        if (j % nskip == 1) signal_hooks.progress(j, nt);
        const float* record = a + 2 * static_cast<std::size_t>(j - 1) * nf;
        for (int k = 0; k < used; k++) {
            work[2 * k] = w[k] * record[2 * k];
            work[2 * k + 1] = w[k] * record[2 * k + 1];
        }
        std::fill(work.begin() + 2 * used, work.end(), 0.0F);
        gfft(work.data(), nr, is);
        float* profile = b + 2 * static_cast<std::size_t>(j - 1) * nr;
        std::rotate_copy(work.begin(), work.end() - 2 * half, work.end(), profile);
        if (p) powrc(nr, profile, p + static_cast<std::size_t>(j - 1) * nr);
    }
}

} // namespace norva
