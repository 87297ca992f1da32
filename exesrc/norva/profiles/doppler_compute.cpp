// Doppler profiles of the signal at range 0, and their zoom about Doppler 0.
#include "doppler_int.h"

#include "profile_parts.h"
#include "profiles/dopprof.h"
#include "profiles/plot_window.h"
#include "range_int.h"
#include "signal/numbers.h"
#include "state/calls.h"
#include "state/user.h"
#include "zuvsys/memory.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace norva {

constexpr int MOST_LAG = 1 << 30;
constexpr long long MOST_SAMPLES = 1LL << 28; // of all rows together: a gibibyte

record_times doppler_rows() {
    return {user.dp_t0, dp.dt, user.dp_nc};
}

bool have_doppler() {
    return dp.okset && dp.nt == user.nt && dp.nf > 0 && user.dp_nc > 0 &&
           user.dpdata.size() >= static_cast<std::size_t>(dp.nf) * user.dp_nc;
}

bool xdp_initialized() {
    return have_doppler();
}

void clamp_parameters(int& wdw, int& ifact, int& lag) {
    wdw = std::clamp(wdw, 1, DP_MOST_WDW);
    ifact = std::clamp(ifact, 1, DP_MOST_IFACT);
    lag = std::clamp(lag, 1, MOST_LAG);
}

// Why there can be no profiles of nf samples by the user's parameters; empty when there can.
static std::string parameters_refused(int nf) {
    if (nf > DOPPROF_MAX_NF) return "FFT size (WDW)*(IFACT) must be <= 2048!";
    if (user.dp_ni > user.nt) return strprintf("WDW=%d must be <= NT=%d", user.dp_ni, user.nt);
    const long long rows = dopprof_count(user.nt, user.dp_ni, user.dp_lag);
    if (rows < 1) return "Doppler profiles need more records, or a WDW of 2.";
    const long long samples = rows * nf;
    const bool in_place = user.dpdata.size() == static_cast<std::size_t>(samples);
    if (samples > MOST_SAMPLES || (!in_place && !enough_memory(static_cast<double>(samples) * sizeof(float))))
        return strprintf("%lld Doppler profiles of %d samples are too many: raise LAG.", rows, nf);
    return "";
}

// The sample of every record at range 0, which is gate nr/2+1 of the complex profiles.
static void cut_at_range_zero() {
    const std::size_t nr = rp.rpdata_cplx.size() / 2 / static_cast<std::size_t>(user.nt);
    resize_block(dp.rpcut, 2 * static_cast<std::size_t>(user.nt));
    for (std::size_t i = 0; i < static_cast<std::size_t>(user.nt); i++)
        std::copy_n(&rp.rpdata_cplx[2 * (i * nr + nr / 2)], 2, &dp.rpcut[2 * i]);
}

static void square(jbuf<float>& block) {
    for (float& v : block) v = std::min(v * v, std::numeric_limits<float>::max());
}

static bool form_profiles() {
    clamp_parameters(user.dp_ni, user.dp_ip, user.dp_lag);
    const int wdw = user.dp_ni, nf = mynino(wdw * user.dp_ip);
    if (const std::string refusal = parameters_refused(nf); !refusal.empty()) {
        popmsg(refusal);
        return false;
    }
    computation busy;
    if (!compute_profiles()) return false; // range profiles up to date, without display
    cut_at_range_zero();
    const int rows = dopprof_count(user.nt, wdw, user.dp_lag);
    resize_block(user.dpdata, static_cast<std::size_t>(nf) * rows);
    resize_block(user.dp_w, rows);
    float t1;
    dopprof(dp.rpcut.data(), user.nt, wdw, nf, user.dp_lag, user.ksx, &user.dp_nc, user.dpdata.data(),
            user.dp_w.data(), &t1);
    user.dp_t0 = static_cast<float>((static_cast<double>(t1) - 1) * user.dt + user.t0);
    dp.power = plotwin_settings().scaling == PLOT_POWER;
    if (dp.power) square(user.dpdata);
    dp.nt = user.nt;
    dp.dt = static_cast<double>(user.dp_lag) * user.dt;
    dp.ni = wdw;
    dp.ip = user.dp_ip;
    dp.nf = nf;
    dp.dd = static_cast<float>(wdw) / static_cast<float>(nf);
    // Doppler 0 stands at element nf/2+1, for an odd nf too.
    dp.d1 = nf % 2 == 0 ? -0.5f * static_cast<float>(wdw) : static_cast<float>(-(nf / 2)) * dp.dd;
    dp.izoom = 0;
    return true;
}

bool compute_doppler() {
    dp.okset = form_profiles();
    if (!dp.okset) {
        dp.nt = dp.nf = dp.izoom = 0;
        user.dp_nc = 0;
    }
    return dp.okset;
}

bool doppler_can_zoom() {
    return have_doppler() && (2L << dp.izoom) <= static_cast<long>(dp.ip) * dp.ni && dp.nf >= 2;
}

void doppler_zoom_once() {
    if (!doppler_can_zoom()) return;
    const int nfp = dp.nf / 2, first = dp.nf / 4;
    float* p = user.dpdata.data();
    for (std::size_t j = 0; j < static_cast<std::size_t>(user.dp_nc); j++)
        std::memmove(p + j * nfp, p + j * dp.nf + first, nfp * sizeof(float));
    dp.d1 += static_cast<float>(first) * dp.dd;
    dp.nf = nfp;
    dp.izoom++;
}

void doppler_zoom_again(int n) {
    dp.izoom = 0;
    for (int i = 0; i < n; i++) doppler_zoom_once();
}

bool strongest_doppler_gate(dp_gate& gate) {
    if (!have_doppler()) return false;
    const float* p = user.dpdata.data();
    float largest = 0;
    std::size_t place = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(dp.nf) * user.dp_nc; i++) {
        if (p[i] > largest && p[i] <= std::numeric_limits<float>::max()) {
            largest = p[i];
            place = i;
        }
    }
    if (largest <= 0) return false;
    const int d = static_cast<int>(place % dp.nf);
    gate = {dp.d1 + static_cast<float>(d) * dp.dd, static_cast<int>(place / dp.nf) + 1, largest};
    return true;
}

} // namespace norva
