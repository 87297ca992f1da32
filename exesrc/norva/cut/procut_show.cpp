// The signal as it is shown: both domains with their amplitude scaled to 1 and their phase next to 0 at the
// peak.
#include "procut_int.h"
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

// Arrays of one domain from its samples. ks is the sign of its phase.
bool fill_display(cut_action& run, const float* x, int n, const curve_scale& scale, int ks,
                  const curve_arrays& to, float* amplitude) {
    if (!scale_is_good(run, scale.amplitude)) return false;
    *amplitude = scale.amplitude;
    const float whole = std::round(to.ph[curve_parts(x, n, scale, ks, to)]);
    if (whole != 0) {
        for (int k = 0; k < n; k++) to.ph[k] -= whole;
    }
    return true;
}

curve_arrays arrays_of(cut_display& d) {
    return {d.a.data(), d.p.data(), d.r.data(), d.q.data()};
}

} // namespace

// The first and the last sample, where a weighting may have been taken out that is next to nothing, are left
// out of the scale, unless they are beyond all measure.
bool show_transform(cut_action& run, const float* x, const curve_arrays& to, float* amplitude) {
    constexpr float BEYOND = 1e15F; // the square of its like is still a number
    const int n = cut().nx;
    curve_scale scale = scale_of(x + 2, n - 2);
    float ends = 0;
    for (float v : {x[0], x[1], x[2 * n - 2], x[2 * n - 1]}) ends = std::max(ends, std::fabs(v));
    if (scale.amplitude > 0 && ends / BEYOND > scale.amplitude) scale = scale_of(x, n);
    return fill_display(run, x, n, scale, -kss, to, amplitude);
}

bool show_cut(cut_action& run) {
    cut_state& s = cut();
    if (s.shown) return true;
    if (!fill_display(run, s.c.data(), s.nc, scale_of(s.c.data(), s.nc), kss, arrays_of(s.cut), &s.cut.scale))
        return false;
    const float* x = s.x.data();
    if (s.kdd > 0) {
        weigh(s.x.data(), s.dw.data(), s.nx, s.b.data());
        x = s.b.data();
    }
    if (!show_transform(run, x, arrays_of(s.transform), &s.transform.scale)) return false;

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
