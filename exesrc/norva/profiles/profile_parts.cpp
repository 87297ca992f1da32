#include "profile_parts.h"

#include "draw/overlays.h"
#include "journal/journal.h"
#include "mocomp/mocomp.h"
#include "profiles/draw_vg_rp.h"
#include "profiles/range_window.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "vgph/winplot.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace norva {

constexpr double MOST_DELAY = 1e9; // microseconds; beyond, a product with a frequency has no phase left

constexpr float DISPLAY_HEIGHT = 5, MIN_WIDTH = 6.4f; // plot inches; below that the notes would collide

void control_journal(int ibut) {
    if (ibut == LEFT_BUTTON) mng_jrnl(nullptr, 1);
    if (ibut == MIDDLE_BUTTON) mng_jrnl(nullptr, 2);
    if (ibut == RIGHT_BUTTON) {
        user.count = 0;
        mng_jrnl(nullptr, 0);
    }
}

void fit_display(_vgdisplay& disp) {
    vg_resize(disp, 1, 1, 0); // learns the client size
    const float nx = static_cast<float>(disp.nx), ny = static_cast<float>(disp.ny);
    if (nx < 1 || ny < 1) return;
    const float width = std::max(DISPLAY_HEIGHT * nx / ny, MIN_WIDTH);
    vg_resize(disp, width, width * ny / nx, 0);
}

std::string profile_hardcopy(const char* name, const _vgdisplay& disp, const _vgframe* picture,
                             const _vgframe* box, const _vgobject* line) {
    // Fills a sheet of 11 by 8.5 inches up to a margin on all sides.
    const float margin = 0.5f, header = 0.3f;
    const float scale = std::min((11 - 2 * margin) / disp.xsize, (8.5f - 2 * margin - header) / disp.ysize);
    vghardcopy_ptr hc = vg_hc_init(name, 0, scale, scale, margin, margin, 1);
    vg_hc_frame(*hc, picture);
    vg_hc_frame(*hc, box);
    vg_hc_object(*hc, line);
    hc_hdr(*hc, 0, disp.ysize + 0.1f, user.jfile);
    const bool opened = hc->context != 0;
    vg_hc_done(*hc);
    std::error_code ignored;
    return opened && std::filesystem::exists(hc->tfname, ignored) ? hc->tfname : "";
}

bool narrow_data(double stime, double etime, void (*close)()) {
    const int nt0 = user.nt0, nt = user.nt;
    const record_range rows = snap_to_records(user.t0, user.dt, nt, stime, etime);
    if (rows.last - rows.first == nt) {
        popmsg("The whole time span is shown: there is nothing to downsize.");
        return false;
    }
    user.nt0 += rows.first;
    user.nt = rows.last - rows.first;
    if (!rp_hooks.downsize(user.nf0, nt0, user.nf)) {
        user.nt0 = nt0;
        user.nt = nt;
        return false;
    }
    close();
    journal_hooks.enable_fields(1);
    jrnl(9);
    return true;
}

bool apply_correction(jbuf<double> t, int journal_tag) {
    if (!std::all_of(t.begin(), t.end(), [](double v) { return std::fabs(v) < MOST_DELAY; })) {
        popmsg("The correction is no delay that could be; nothing was changed.");
        return false;
    }
    mocomp(user.pfdata.data(), user.nf, user.nt, user.f0, user.df, user.rh, t.data());
    mcfile& mc = user.mc;
    mc.t[mc.ptr] = std::move(t);
    mc.flag[mc.ptr] = MC_DELAY;
    mc.nt[mc.ptr] = user.nt;
    mc.nt0[mc.ptr] = user.nt0;
    mc.nf[mc.ptr] = user.nf;
    mc.nf0[mc.ptr] = user.nf0;
    mc.ptr++;
    mc.nrecs = mc.ptr;
    jrnl(journal_tag);
    return true;
}

} // namespace norva
