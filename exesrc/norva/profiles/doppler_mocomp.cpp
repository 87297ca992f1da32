// Corrections read off the Doppler profiles: each becomes one delay history in user.mc and is applied to the
// raw data.
#include "doppler_int.h"

#include "profile_parts.h"
#include "profiles/dopdft.h"
#include "signal/fft.h"
#include "signal/interp.h"
#include "signal/numbers.h"
#include "state/calls.h"
#include "state/user.h"

#include <vector>

namespace norva {

constexpr int CENTER = 0, RMV_DRIFT = 1;
constexpr int DRIFT_PADDING = 4; // of the transform that measures the Doppler rate

static std::string refusal(int tag) {
    if (user.mc.ptr >= MC_LAST_PTR) return "No more memory for user.mc (maxrecs=64)";
    if (tag == RMV_DRIFT && user.nt > GFFT_MAX_MIXED / DRIFT_PADDING)
        return "nft must be < 10000 for gfft()!";
    if (user.nt < 2) return "A correction needs at least 2 records.";
    if (!have_doppler() || user.pfdata.size() < 2 * static_cast<std::size_t>(user.nf) * user.nt)
        return "A correction needs Doppler profiles.";
    return "";
}

// A constant delay rate, zero at mid-run: x gates of Doppler are x/(dt*WDW) Hz, and microseconds of delay per
// second times MHz are Hz.
static void constant_rate(jbuf<double>& t, double fcen) {
    const double rate = user.ksx * dp.x / (fcen * user.dt * dp.ni);
    std::vector<double> time(t.size()), rates(t.size(), rate);
    for (std::size_t i = 0; i < time.size(); i++) time[i] = static_cast<double>(i) * user.dt;
    drint(rates.data(), time.data(), static_cast<int>(time.size()), t.data());
}

// A quadratic delay, which at the centre frequency takes the measured Doppler rate out of the phase.
static void quadratic(jbuf<double>& t, double fcen) {
    const int nft = DRIFT_PADDING * user.nt;
    std::vector<float> work(2 * static_cast<std::size_t>(nft));
    float dft;
    dopdft(dp.rpcut.data(), work.data(), user.nt, nft, &dft);
    for (std::size_t i = 0; i < t.size(); i++)
        t[i] = -0.5 * static_cast<double>(i) * static_cast<double>(i) * static_cast<double>(dft) / fcen;
}

void xdp_set_position(double x) {
    dp.x = x;
}

void xdp_mocomp(int tag) {
    if (const std::string text = refusal(tag); !text.empty()) {
        popmsg(text);
        return;
    }
    computation busy;
    jbuf<double> t(static_cast<std::size_t>(user.nt) + 1);
    const double fcen = cfreq(user.f0, user.df, user.nf);
    if (tag == CENTER)
        constant_rate(t, fcen);
    else
        quadratic(t, fcen);
    // The step keeps the parameters with which the refresh below shows it.
    doppler_take_fields();
    if (apply_correction(std::move(t), tag == CENTER ? 32 : 31)) xdp_cb(nullptr, -1);
}

} // namespace norva
