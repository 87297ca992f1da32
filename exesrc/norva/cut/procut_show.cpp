// The signal as it is shown: both domains with their amplitude scaled to 1 and their phase next to 0 at the
// peak.
#include "cut/curve.h"
#include "procut_int.h"
#include "signal/peak.h"
#include "signal/vector.h"
#include "state/image_cut.h"

#include <cmath>

namespace norva {

namespace {

constexpr const char* no_signal = "***Error 195...Signal identically zero, backup to restore";
constexpr const char* no_number = "***Error 195...Signal is not finite, backup to restore";

bool scale_is_good(cut_action& run, float scale) {
    if (!(scale > 0)) return run.fail(no_signal);
    return std::isfinite(scale) || run.fail(no_number);
}

// Arrays of one domain from its scaled samples. ks is the sign of its phase.
void fill_display(const float* x, int n, int ks, cut_display& to) {
    amphs(x, n, ks, to.a.data(), to.p.data());
    reima(x, n, to.r.data(), to.q.data());
    const float whole = std::round(to.p[kpeak(to.a.data(), n) - 1]);
    if (whole != 0) {
        for (int k = 0; k < n; k++) to.p[k] -= whole;
    }
}

} // namespace

bool show_transform(cut_action& run, float* x, cut_display& to) {
    const cut_state& s = cut();
    // The first and the last sample, where a weighting may have been taken out that is next to nothing, are
    // left out of the scale.
    std::array<float, 4> ends = {x[0], x[1], x[2 * s.nx - 2], x[2 * s.nx - 1]};
    ampscl(x + 2, s.nx - 2, &to.scale);
    if (!scale_is_good(run, to.scale)) return false;
    for (float& v : ends) v /= to.scale;
    x[0] = ends[0], x[1] = ends[1], x[2 * s.nx - 2] = ends[2], x[2 * s.nx - 1] = ends[3];
    fill_display(x, s.nx, -kss, to);
    return true;
}

bool show_cut(cut_action& run) {
    cut_state& s = cut();
    if (s.shown) return true;
    std::copy_n(s.c.begin(), 2 * s.nc, s.b.begin());
    ampscl(s.b.data(), s.nc, &s.cut.scale);
    if (!scale_is_good(run, s.cut.scale)) return false;
    fill_display(s.b.data(), s.nc, kss, s.cut);

    if (s.kdd > 0) {
        for (int k = 0; k < s.nx; k++) {
            s.b[2 * k] = s.x[2 * k] * s.dw[k];
            s.b[2 * k + 1] = s.x[2 * k + 1] * s.dw[k];
        }
    } else {
        std::copy_n(s.x.begin(), 2 * s.nx, s.b.begin());
    }
    if (!show_transform(run, s.b.data(), s.transform)) return false;

    s.kc1 = 0;
    while (s.kc1 < s.nc && !(s.cut.a[s.kc1] > 0)) s.kc1++;
    s.kc2 = s.nc;
    while (s.kc2 > 0 && !(s.cut.a[s.kc2 - 1] > 0)) s.kc2--;
    s.shown = true;
    return true;
}

int put_common(cut_action& run) {
    const cut_state& s = cut();
    run.own = 0;
    run.put(cutj.isi + s.is);
    run.put(s.il);
    auto put_domain = [&](const cut_display& d, int n) {
        run.put(n);
        run.put(d.scale);
        for (const cut_real* a : {&d.u, &d.a, &d.p, &d.r, &d.q}) run.put(a->data(), n);
    };
    put_domain(s.cut, s.nc);
    put_domain(s.transform, s.nx);
    for (int k = 0; k < run.nextra; k++) run.put(run.extra[k]);
    return run.own;
}

} // namespace norva
