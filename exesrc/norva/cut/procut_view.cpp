// Actions that change what is shown and not the signal.
#include "procut_int.h"

#include <cmath>

namespace norva {

// The derivative of order kd of a shown curve, and of a second one for kf 2 and 3. The signal stays.
bool act_differentiate(cut_action& run) {
    cut_state& s = cut();
    const int id = run.integer(1), kd = run.integer(2), kf = run.integer(3);
    if (kf < 0 || kf > 3) return run.fail("***Error 108a...Nothing to differentiate");
    if (kd < 0 || kd > PC_MAX_DERIVATIVE)
        return run.fail("***Error 108b...Order of derivative must be 0 to 100");
    if (!run.accept(4) || !show_cut(run)) return false;

    const cut_display& from = id > 0 ? s.transform : s.cut;
    const int nn = id > 0 ? s.nx : s.nc;
    const float dd = id > 0 ? s.dx : s.dc;
    run.begin_own(PC_DIFFERENTIATE);
    for (int v : {id, kd, kf, nn}) run.put(v);
    run.put(from.u.data(), nn);
    auto put_derivative = [&](const float* curve) {
        std::copy_n(curve, nn, s.b.begin());
        for (int order = 0; order < kd; order++) {
            for (int k = 0; k < nn; k++) s.b[k] /= dd;
            differ(s.b.data(), nn, s.b.data());
        }
        run.put(s.b.data(), nn);
    };
    if (kf == 3) {
        float *re = s.d.data(), *im = s.d.data() + nn;
        curve_split(id > 0 ? shown_transform() : s.c.data(), nn, from.scale, re, im);
        put_derivative(re);
        put_derivative(im);
    } else {
        put_derivative(kf == 1 ? from.p.data() : from.a.data());
        if (kf == 2) put_derivative(from.p.data());
    }
    s.id = id;
    return true;
}

bool act_restore(cut_action& run) {
    if (!run.accept(1)) return false;
    cut().il = PC_RESTORE;
    return true;
}

bool act_deweight(cut_action& run) {
    if (!run.accept(2)) return false;
    cut_state& s = cut();
    s.kdd = run.integer(1);
    s.il = PC_DEWEIGHT;
    s.shown = false;
    run.add(s.kdd);
    return true;
}

bool act_previous(cut_action& run) {
    if (!run.accept(2)) return false;
    cut().kps = run.integer(1);
    cut().il = PC_PREVIOUS;
    return true;
}

} // namespace norva
