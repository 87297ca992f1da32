// Decimation of the window of data.
#include "app/decimation.h"

#include "app/gpf.h"
#include "app/main_window.h"
#include "app/window_values.h"
#include "journal/journal.h"
#include "signal/numbers.h"
#include "signal/resize.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "toolkit/toolkit.h"

#include <algorithm>

namespace norva {

// One direction: m samples from the first n of them.
static void choose(int& n, int k, int& m) {
    m = n;
    if (n == 1) return;
    m = mynino(n / k);
    if (m <= n) return;
    for (int i = 1; m > n; i++) m = mynino((n - i) / k);
    n = m;
}

decimated_size decimate_to(int nf, int nt, int kf, int kt) {
    decimated_size size{nf, nt, nf, nt};
    choose(size.nt, kt, size.mt);
    choose(size.nf, kf, size.mf);
    return size;
}

void apply_decimation(int mf, int mt) {
    decimate(user.pfdata.data(), user.nf, user.nt, mf, mt);
    take_decimated_steps(mf, mt);
    loaded_window_is_users();
}

static void store_record(int mf, int mt) {
    mcfile& mc = user.mc;
    const int i = mc.ptr;
    mc.t[i].reset(2);
    mc.t[i][0] = mf;
    mc.t[i][1] = mt;
    mc.nt[i] = user.nt;
    mc.nt0[i] = user.nt0;
    mc.nf[i] = user.nf;
    mc.nf0[i] = user.nf0;
    mc.flag[i] = MC_DECIMATE;
    mc.ptr += 1;
    mc.nrecs = mc.ptr;
}

static void decimate_window() {
    filewin_cb(nullptr, 13);
    if (!dec_ok) return;
    if (user.nt > DECIMATION_MOST_RECORDS) {
        popmsg("The number of time samples must be <=8192 for a decimation");
        return;
    }
    if (user.mc.ptr >= MC_LAST_PTR) {
        popmsg("No more memory for user.mc (maxrecs=64)");
        return;
    }
    const decimated_size size = decimate_to(user.nf, user.nt, decimation_factor(1), decimation_factor(0));
    if (size.mf == size.nf && size.mt == size.nt) {
        popmsg("No decimation done!");
        reset_decimation_factors();
        return;
    }
    const int nf = user.nf;
    user.nf = size.nf;
    user.nt = size.nt;
    get_gpf_data(1, user.nf0, user.nt0, nf);
    if (!user.pfdata) return;
    store_record(size.mf, size.mt);
    {
        const computation running;
        apply_decimation(size.mf, size.mt);
    }
    cvrt_user_vals(1);
    jrnl(2);
    show_numflds();
    reset_decimation_factors();
}

void dec_cb(wi_obj* wo, int tag) {
    if (msgwinon || rpwinon || dpwinon || pkswinon || mcwinon) return;
    if (tag == 1 || tag == 2) {
        const double value = wi_get_value(wo) + (tag == 1 ? 1 : -1);
        wi_set_value(wo, std::max(1.0, value));
        return;
    }
    // The warning comes first and the work goes on.
    if (user.mc.ptr == 0) popmsg("Warning: data should be motion compensated first!");
    dec_ok = 0;
    const bool in_units = user.pstyle == 0;
    if (in_units) chg_parmstyle(nullptr, 0);
    if (user.pstyle == 1) decimate_window();
    if (in_units && user.pstyle == 1) chg_parmstyle(nullptr, 0);
    refresh_controls();
}

} // namespace norva
