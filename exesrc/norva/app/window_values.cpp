// The window of data in its two forms.
#include "app/window_values.h"

#include "state/run.h"
#include "state/user.h"

#include <algorithm>
#include <cmath>

namespace norva {

// Typed values may be anything; this keeps sums of two counts inside an int.
static int to_count(double value) {
    constexpr double most = 1e9;
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp(value, -most, most));
}

static int nint(double value) {
    return to_count(std::round(value)); // halves away from zero
}

// A sample whose frequency and a record whose time are known; the others follow in steps.
static struct {
    int nf0 = 1, nt0 = 1;
    double f0 = 0, t0 = 0; // MHz, s
} origin;

float window_f0(int nf0) {
    return static_cast<float>((nf0 - origin.nf0) * static_cast<double>(user.df) + origin.f0);
}

static float window_t0(int nt0) {
    return static_cast<float>((nt0 - origin.nt0) * static_cast<double>(user.dt) + origin.t0);
}

void take_raw_steps() {
    user.df = gp.df;
    user.dt = gp.wfri;
    origin = {1, 1, gp.f0, gp.t0};
}

void take_decimated_steps(int mf, int mt) {
    origin = {user.nf0, user.nt0, window_f0(user.nf0), window_t0(user.nt0)};
    user.df = user.nf * user.df / mf;
    user.dt = user.nt * user.dt / mt;
    user.nf = mf;
    user.nt = mt;
}

void cvrt_user_vals(int flag) {
    const int sgn = gp.df < 0 ? -1 : 1;
    if (!user.pfdata) take_raw_steps();
    const double df = user.df, dt = user.dt;
    if (flag == 0) {
        user.nf0 = sgn * nint((user.f0 - origin.f0) / df) + origin.nf0;
        user.nf = nint(user.bw / df);
        user.nt0 = nint((user.t0 - origin.t0) / dt) + origin.nt0;
        user.nt = nint(user.dwell / dt);
    }
    user.f0 = window_f0(user.nf0);
    user.bw = static_cast<float>(user.nf * df);
    user.t0 = window_t0(user.nt0);
    user.dwell = static_cast<float>(user.nt * dt);
}

data_window user_window() {
    return {user.nf0, user.nf, user.nt0, user.nt};
}

void set_user_window(const data_window& window) {
    user.nf0 = window.nf0;
    user.nf = window.nf;
    user.nt0 = window.nt0;
    user.nt = window.nt;
}

// The window may only become narrower while later steps stand on it. All corrections stand; the verdict is
// that of the last failed check.
static window_verdict contain(const data_window& force) {
    window_verdict verdict = window_verdict::ok;
    if (user.nf0 < force.nf0 || user.nf0 > force.nf0 + force.nf - 1) {
        user.nf0 = force.nf0;
        verdict = window_verdict::f0_outside;
    }
    if (user.nt0 < force.nt0 || user.nt0 > force.nt0 + force.nt - 1) {
        user.nt0 = force.nt0;
        verdict = window_verdict::t0_outside;
    }
    const int most_nf = force.nf - (user.nf0 - force.nf0), most_nt = force.nt - (user.nt0 - force.nt0);
    if (user.nf > most_nf) {
        user.nf = most_nf;
        verdict = window_verdict::nf_outside;
    }
    if (user.nt > most_nt) {
        user.nt = most_nt;
        verdict = window_verdict::nt_outside;
    }
    return verdict;
}

static void hold_inside_file() {
    const auto hold = [](int value, int most) { return std::max(1, std::min(value, most)); };
    user.nf0 = hold(user.nf0, gp.nf);
    user.nf = hold(user.nf, gp.nf - user.nf0 + 1);
    user.nt0 = hold(user.nt0, gp.nrec);
    user.nt = hold(user.nt, gp.nrec - user.nt0 + 1);
}

window_verdict take_window(const window_field fields[4], int pstyle, const data_window& force) {
    for (int i = 0; i < 4; i++) {
        if (pstyle == 1)
            user.samples()[i] = to_count(fields[i].typed);
        else
            user.units()[i] = static_cast<float>(fields[i].typed);
    }
    cvrt_user_vals(pstyle);
    for (int i = 0; i < 4; i++)
        if (fields[i].untouched) user.samples()[i] = fields[i].sample;

    ntime = user.nt;
    nfreq = user.nf;
    stsf = ntime == 1 || nfreq == 1;
    if (ntime == 1 && nfreq == 1) return window_verdict::one_point;

    window_verdict verdict = window_verdict::ok;
    if (eoj > 0 && (stsf == 0 || user.count != 0)) verdict = contain(force);
    hold_inside_file();
    cvrt_user_vals(1);
    return verdict;
}

const char* window_message(window_verdict verdict) {
    switch (verdict) {
    case window_verdict::ok: break;
    case window_verdict::one_point: return "Only one point specified!";
    case window_verdict::f0_outside:
        return "The first frequency sample must be within the current frequency interval.  To specify "
               "a first frequency outside the current interval,backup in the journal and specify a new "
               "interval.";
    case window_verdict::t0_outside:
        return "The first time sample must be within the current time interval.  To specify a first time "
               "outside the current interval,backup in the journal and specify a new interval.";
    case window_verdict::nf_outside:
        return "The new frequency interval cannot extend beyond the current frequency interval.  To specify "
               "a frequency interval outside the current interval, backup in the journal and specify a new "
               "interval.";
    case window_verdict::nt_outside:
        return "The new time interval cannot extend beyond the current time interval.  To specify a time "
               "interval outside the current interval, backup in the journal and specify a new interval.";
    }
    return "";
}

} // namespace norva
