#include "state/write_out.h"

namespace norva {

reduced_data reduced;
write_calls write_hooks = {.image_hands_over = [] {}};

void write_pfx_out(int nf, int nt, int ksx, std::span<const float> samples) {
    reduced = {};
    const std::size_t all =
        nf > 0 && nt > 0 ? 2 * static_cast<std::size_t>(nf) * static_cast<std::size_t>(nt) : 0;
    if (all == 0 || samples.size() < all) return;
    reduced.nf = nf;
    reduced.nt = nt;
    reduced.ksx = ksx;
    reduced.samples.assign(samples.first(all));
}

} // namespace norva
