// Actions on the phase of the cut.
#include "cut/scatterer.h"
#include "procut_int.h"
#include "signal/vector.h"
#include "state/image_cut.h"

#include <cmath>

namespace norva {

namespace {

// The line of cycles dp a sample, p1 at sample k1 (from 1), taken out of n samples whose phase has the sign
// ks.
void subtract_line(float* x, int n, int ks, int k1, double dp, double p1) {
    const int sign = ks < 0 ? 1 : -1;
    turn_line(x, n, sign * dp, sign * (p1 - (k1 - 1) * dp));
}

struct spline_texts {
    const char *step, *start, *end;
};

// First sample of the spline on the grid, from 1; 0 with a message when it does not fit.
int spline_start(cut_action& run, int n, float first, float step, const spline_texts& texts) {
    const cut_spline& p = cut().spline;
    const int k1 = sample_at(p.x1, first, step);
    const char* bad = nullptr;
    if (!(std::fabs(p.dx / step - 1) <= 0.01F))
        bad = texts.step;
    else if (k1 <= 0)
        bad = texts.start;
    else if (p.nph + k1 - 1 > n)
        bad = texts.end;
    if (!bad) return k1;
    run.fail(bad);
    return 0;
}

// Clears all but the samples k1..k2, from 1, of n complex ones.
void keep_only(float* x, int n, int k1, int k2) {
    std::fill(x, x + 2 * (k1 - 1), 0.0F);
    std::fill(x + 2 * k2, x + 2 * n, 0.0F);
}

} // namespace

bool act_sub_slope(cut_action& run) {
    cut_state& s = cut();
    const int id = run.integer(1);
    const bool transform = id > 0;
    const float ch1 = run.real(2), ch2 = run.real(3), p1 = run.real(4), p2 = run.real(5);
    const int k1 = transform ? transform_sample(ch1) : cut_sample(ch1);
    const int k2 = transform ? transform_sample(ch2) : cut_sample(ch2);
    if (k2 <= k1)
        return run.fail(transform ? "***Error 103b...Crosshairs not in sequence"
                                  : "***Error 103a...Crosshairs not in sequence");
    const double dp = (static_cast<double>(p2) - p1) / (k2 - k1);
    if (!std::isfinite(dp)) return run.fail("***Error 103c...Phase is not finite");
    if (!run.accept(6)) return false;

    const double psl = dp / (transform ? s.dx : s.dc);
    if (transform) {
        subtract_line(s.x.data(), s.nx, -kss, k1, dp, p1);
        transform_to_cut();
        s.slope += psl;
    } else {
        subtract_line(s.c.data(), s.nc, kss, k1, dp, p1);
        cut_to_transform();
        // A slope of f cycles a gate moves the transform by -f; the weighting stays on the data.
        const int places = nint(std::fmod(-psl / s.dx, s.nx));
        shaft(s.w.data(), s.nx, places);
        shaft(s.dw.data(), s.nx, places);
        s.moved = true;
    }
    s.psla += static_cast<float>(psl);
    s.kmc = id == 1 ? subtracted::slope : subtracted::slope_in_image;
    s.id = id;
    s.il = PC_SUB_SLOPE;
    for (float v : {ch1, ch2, static_cast<float>(psl), s.psla}) run.add(v);
    return true;
}

bool act_sub_spline(cut_action& run) {
    cut_state& s = cut();
    cut_spline& p = s.spline;
    if (p.ids < 0) return run.fail("***Error 104a...Spline not defined");
    const bool transform = p.ids > 0;
    constexpr spline_texts in_transform = {"***Error 104e...Spline improperly defined",
                                           "***Error 104f...Spline improperly defined",
                                           "***Error 104g...Spline improperly defined"};
    constexpr spline_texts in_image = {"***Error 104b...Spline improperly defined",
                                       "***Error 104c...Spline improperly defined",
                                       "***Error 104d...Spline improperly defined"};
    const int k1 = transform ? spline_start(run, s.nx, s.x1, s.dx, in_transform)
                             : spline_start(run, s.nc, s.c1, s.dc, in_image);
    if (k1 == 0 || !run.accept(1)) return false;

    const int k2 = k1 + p.nph - 1;
    if (transform) {
        keep_only(s.x.data(), s.nx, k1, k2);
        turn(&s.x[2 * (k1 - 1)], p.nph, kss, p.ph.data());
        transform_to_cut();
    } else {
        keep_only(s.c.data(), s.nc, k1, k2);
        turn(&s.c[2 * (k1 - 1)], p.nph, -kss, p.ph.data());
        cut_to_transform();
    }
    run.add(p.ids);
    run.add(p.nbp);
    for (int k = 0; k < p.nbp; k++) run.add(p.breaks[k]);
    s.kmc = p.ids == 1 ? subtracted::spline : subtracted::spline_in_image;
    s.id = p.ids;
    p.ids = -1; // a spline can be subtracted once
    s.il = PC_SUB_SPLINE;
    return true;
}

// The size of a jump is that of the phase as plotted, whose sign in the transform is -kss.
bool act_phase_jump(cut_action& run) {
    cut_state& s = cut();
    const int k1 = transform_sample(run.real(1)), k2 = transform_sample(run.real(2));
    const float phj = run.real(3);
    if (k2 <= k1) return run.fail("***Error 105...Crosshairs not in sequence");
    if (!std::isfinite(phj)) return run.fail("***Error 105...Phase jump is not finite");
    if (!run.accept(4)) return false;

    float* am = s.d.data();
    float* ph = s.d.data() + s.nx;
    amphs(s.x.data(), s.nx, -kss, am, ph);
    phsjmp(ph, s.nx, std::max(k1, 3), std::min(k2, s.nx - 2), phj);
    aptocx(am, ph, s.nx, -kss, s.x.data());
    transform_to_cut();
    s.kmc = subtracted::none;
    s.il = PC_PHASE_JUMP;
    return true;
}

bool act_zero_phase(cut_action& run) {
    cut_state& s = cut();
    int k1 = transform_sample(run.real(1)), k2 = transform_sample(run.real(2));
    if (k2 <= k1) return run.fail("***Error 106a...Crosshairs not in sequence");
    if (!run.accept(3)) return false;

    k1 = std::clamp(k1, 1, s.nx);
    k2 = std::clamp(k2, 1, s.nx);
    keep_only(s.x.data(), s.nx, k1, k2);
    rectify(&s.x[2 * (k1 - 1)], k2 - k1 + 1);
    transform_to_cut();
    s.edited = true;
    s.kmc = subtracted::none;
    s.il = PC_ZERO_PHASE;
    return true;
}

} // namespace norva
