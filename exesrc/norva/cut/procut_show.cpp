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
bool fill_display(cut_action& run, const float* x, int n, const curve_scale& found, int ks,
                  const curve_arrays& to, curve_scale* scale) {
    if (!scale_is_good(run, found.amplitude)) return false;
    *scale = found;
    const float whole = std::round(to.ph[curve_parts(x, n, found, ks, to)]);
    if (whole != 0) {
        for (int k = 0; k < n; k++) to.ph[k] -= whole;
    }
    return true;
}

// Both domains; their real and imaginary parts go to `cut_parts` and `transform_parts`, unless these are
// null.
bool fill_displays(cut_action& run, float* cut_parts, float* transform_parts) {
    cut_state& s = cut();
    const auto arrays_of = [](cut_display& d, float* parts, int n) {
        return curve_arrays{d.a.data(), d.p.data(), parts, parts ? parts + n : nullptr};
    };
    if (!fill_display(run, s.c.data(), s.nc, scale_of(s.c.data(), s.nc), kss,
                      arrays_of(s.cut, cut_parts, s.nc), &s.cut.scale))
        return false;
    if (!show_transform(run, shown_transform(), arrays_of(s.transform, transform_parts, s.nx),
                        &s.transform.scale))
        return false;
    s.kc1 = 0;
    while (s.kc1 < s.nc && !(s.cut.a[s.kc1] > 0)) s.kc1++;
    s.kc2 = s.nc;
    while (s.kc2 > 0 && !(s.cut.a[s.kc2 - 1] > 0)) s.kc2--;
    s.shown = true;
    return true;
}

} // namespace

// The first and the last sample, where a weighting may have been taken out that is next to nothing, are left
// out of the scale, unless they are beyond all measure.
bool show_transform(cut_action& run, const float* x, const curve_arrays& to, curve_scale* scale) {
    constexpr float BEYOND = 1e15F; // the square of its like is still a number
    const int n = cut().nx;
    curve_scale found = scale_of(x + 2, n - 2);
    float ends = 0;
    for (float v : {x[0], x[1], x[2 * n - 2], x[2 * n - 1]}) ends = std::max(ends, std::fabs(v));
    if (found.amplitude > 0 && ends / BEYOND > found.amplitude) found = scale_of(x, n);
    return fill_display(run, x, n, found, -kss, to, scale);
}

const float* shown_transform() {
    cut_state& s = cut();
    if (s.kdd <= 0) return s.x.data();
    weigh(s.x.data(), s.dw.data(), s.nx, s.b.data());
    return s.b.data();
}

bool show_cut(cut_action& run) {
    return cut().shown || fill_displays(run, nullptr, nullptr);
}

bool put_common(cut_action& run) {
    const cut_state& s = cut();
    // Of a domain: number of samples, scale, and five arrays, of which the last two need not come from far.
    const int cut_at = 2, transform_at = cut_at + 2 + 5 * s.nc;
    float* cut_parts = run.floats_at(cut_at + 2 + 3 * s.nc);
    float* transform_parts = run.floats_at(transform_at + 2 + 3 * s.nx);
    if (s.shown) {
        curve_split(s.c.data(), s.nc, s.cut.scale, cut_parts, cut_parts + s.nc);
        curve_split(shown_transform(), s.nx, s.transform.scale, transform_parts, transform_parts + s.nx);
    } else if (!fill_displays(run, cut_parts, transform_parts)) {
        return false;
    }
    run.own = 0;
    run.put(cutj.isi + s.is);
    run.put(s.il);
    auto put_domain = [&](const cut_display& d, int n) {
        run.put(n);
        run.put(d.scale.amplitude);
        for (const cut_real* a : {&d.u, &d.a, &d.p}) run.put(a->data(), n);
        run.own += 2 * n;
    };
    put_domain(s.cut, s.nc);
    put_domain(s.transform, s.nx);
    for (int k = 0; k < run.nextra; k++) run.put(run.extra[k]);
    return true;
}

} // namespace norva
