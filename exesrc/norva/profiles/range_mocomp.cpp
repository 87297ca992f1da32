// Corrections read off the range profiles: each becomes one delay history in user.mc and is applied to the
// raw data.
#include "range_int.h"

#include "mocomp/mocomp.h"
#include "profile_parts.h"
#include "profiles/rngdft.h"
#include "signal/numbers.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"

#include <algorithm>
#include <cmath>

namespace norva {

constexpr int CENTER = 0, RMV_DRIFT = 1, RMV_LINE = 2, RMV_AMBS = 3;
constexpr int LEAST_FOR_SLOPE = 10;               // records: the ends of the delay's derivatives need room
constexpr int MOST_FOR_SLOPE = RNGCOR_MAX_NT - 1; // its history has one delay more

std::string correction_refused(int tag) {
    const std::string name = tag == RMV_DRIFT ? "Rmv Drift" : tag == RMV_LINE ? "Rmv Line" : "A correction";
    if (user.mc.ptr >= MC_LAST_PTR) return "No more memory for user.mc (maxrecs=20)";
    if (tag == RMV_DRIFT || tag == RMV_LINE) {
        if (user.nt < LEAST_FOR_SLOPE)
            return name + " needs at least " + std::to_string(LEAST_FOR_SLOPE) + " records.";
        if (user.nt > MOST_FOR_SLOPE)
            return name + " takes at most " + std::to_string(MOST_FOR_SLOPE) + " records.";
    }
    if (tag == RMV_DRIFT && iradx2(8 * user.nf) > RNGDFT_MAX_N)
        return name + " takes at most " + std::to_string(RNGDFT_MAX_N / 8) + " frequencies.";
    if (user.nt < 2) return name + " needs at least 2 records.";
    if (user.pfdata.size() < 2 * static_cast<std::size_t>(user.nf) * user.nt) return name + " needs data.";
    return "";
}

// A drift of `rate` microseconds per record, moved to when the samples were taken: rngcor for a straight
// line, T - (T/2 + TS) T' with T' = rate/TR. All higher derivatives are zero, and differences that only hold
// rounding would be blown up by TS/TR.
static void refined_drift(jbuf<double>& t, double rate) {
    double fact1, fact2;
    rngcor_get(user.wfri, user.bw, cfreq(user.f0, user.df, user.nf), gp.plen, &fact1, &fact2);
    for (std::size_t i = 0; i < t.size(); i++) {
        const double delay = static_cast<double>(i) * rate;
        t[i] = delay - (0.5 * delay + fact2) * rate / fact1;
    }
}

static void delay_history(jbuf<double>& t, int tag, double x) {
    const double sgn = user.ksy;
    switch (tag) {
    case CENTER: std::fill(t.begin(), t.end(), sgn * x / user.bw); break;
    case RMV_DRIFT: {
        float dft, slr;
        rngdft(user.pfdata.data(), user.nf, user.nt, 1, &dft, &slr); // carries the sign of the range already
        refined_drift(t, static_cast<double>(dft) / user.bw);
        break;
    }
    case RMV_LINE: refined_drift(t, sgn * x / user.bw); break;
    case RMV_AMBS: {
        const double per_record = rawin_value() * sgn / cfreq(user.f0, user.df, user.nf);
        for (std::size_t i = 0; i < t.size(); i++) t[i] = static_cast<double>(i) * per_record;
        break;
    }
    }
}

static int journal_tag(int tag) {
    switch (tag) {
    case CENTER: return 5;
    case RMV_DRIFT: return 4;
    case RMV_LINE: return 7;
    default: return pkswinon ? 16 : 8;
    }
}

void xrp_mocomp(int tag, double x) {
    if (const std::string refusal = correction_refused(tag); !refusal.empty()) {
        popmsg(refusal);
        return;
    }
    computation busy;
    jbuf<double> t(static_cast<std::size_t>(user.nt) + 1);
    delay_history(t, tag, x);
    if (!apply_correction(std::move(t), journal_tag(tag))) return;
    if (tag == RMV_DRIFT) return; // its own button recomputes
    if (rpwinon) xrp_cb(nullptr, -1);
    if (tag == RMV_AMBS && pkswinon && rp_hooks.xpk_draw_init) rp_hooks.xpk_draw_init();
}

} // namespace norva
