// Range profiles of the current window of data, and their zoom about range 0.
#include "range_int.h"

#include "profile_parts.h"
#include "profiles/plot_window.h"
#include "profiles/rngpro.h"
#include "signal/numbers.h"
#include "signal/vector.h"
#include "state/calls.h"
#include "state/user.h"
#include "zuvsys/memory.h"

#include <algorithm>
#include <cstring>

namespace norva {

record_times range_records() {
    return {user.t0, user.dt, user.nt};
}

bool have_profiles() {
    return user.nr > 0 && rp.nt > 0 && rp.nt == user.nt && rp.nf == user.nf &&
           user.rpdata.size() >= static_cast<std::size_t>(rp.nt) * user.nr;
}

static void drop_profiles() {
    user.rpdata.clear();
    user.nr = 0;
    rp.nf = rp.nt = 0;
}

bool compute_profiles() {
    plotwin_cb(nullptr, 15);
    const std::size_t samples = static_cast<std::size_t>(std::max(user.nf, 0)) * std::max(user.nt, 0);
    if (samples == 0 || user.nf > RNGPRO_MAX_NF || user.pfdata.size() < 2 * samples) {
        drop_profiles();
        return false;
    }
    const double factor = plotwin_settings().interpolation;
    const double wanted = std::min(factor * user.nf, 2.0 * RNGPRO_MAX_NR);
    const int nr = mynino(static_cast<int>(wanted));
    if (nr > RNGPRO_MAX_NR) {
        popmsg("user.nr>4096 -- xrp!");
        if (have_profiles())
            plotwin_put_interpolation(rp.factor);
        else
            drop_profiles();
        return false;
    }
    const double bytes = 3.0 * sizeof(float) * nr * user.nt; // complex profiles, and their power
    if (rp.rpdata_cplx.size() != 2 * static_cast<std::size_t>(nr) * user.nt && !enough_memory(bytes)) {
        popmsg("The profiles do not fit into this machine's memory; lower the interpolation or narrow the "
               "window.");
        drop_profiles();
        return false;
    }
    computation busy;
    resize_block(rp.rpdata_cplx, 2 * static_cast<std::size_t>(nr) * user.nt);
    resize_block(user.rpdata, static_cast<std::size_t>(nr) * user.nt);
    rngpro(user.pfdata.data(), user.nf, user.nt, nr, user.ksy, &rp.r1, &rp.dr, rp.rpdata_cplx.data(),
           user.rpdata.data());
    user.nr = nr;
    rp.nf = user.nf;
    rp.nt = user.nt;
    rp.factor = factor;
    rp.izoom = 0;
    return true;
}

void restore_full_range() {
    if (!have_profiles() || rp.izoom == 0) return;
    const int nr = static_cast<int>(rp.rpdata_cplx.size() / rp.nt / 2);
    for (int j = 0; j < rp.nt; j++) {
        const std::size_t row = static_cast<std::size_t>(j) * nr;
        powrc(nr, rp.rpdata_cplx.data() + 2 * row, user.rpdata.data() + row);
    }
    rp.r1 = -(nr / 2) * rp.dr;
    user.nr = nr;
    rp.izoom = 0;
}

bool can_zoom() {
    return have_profiles() && (2L << rp.izoom) <= user.nf && user.nr >= 2;
}

void zoom_once() {
    if (!can_zoom()) return;
    const int nrp = user.nr / 2, first = user.nr / 4;
    float* p = user.rpdata.data();
    for (int j = 0; j < rp.nt; j++) {
        const std::size_t row = static_cast<std::size_t>(j);
        std::memmove(p + row * nrp, p + row * user.nr + first, nrp * sizeof(float));
    }
    rp.r1 += first * rp.dr;
    user.nr = nrp;
    rp.izoom++;
}

void zoom_again(int n) {
    rp.izoom = 0;
    for (int i = 0; i < n; i++) zoom_once();
}

bool strongest_range_gate(rp_gate& gate) {
    if (!have_profiles()) return false;
    const float* p = user.rpdata.data();
    float largest = 0;
    std::size_t place = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(rp.nt) * user.nr; i++) {
        if (p[i] > largest && p[i] <= 3.4028235e38f) {
            largest = p[i];
            place = i;
        }
    }
    if (largest <= 0) return false;
    const int r = static_cast<int>(place % user.nr);
    gate = {rp.r1 + r * rp.dr, static_cast<int>(place / user.nr) + 1, largest};
    return true;
}

} // namespace norva
