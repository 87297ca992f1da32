// The image window: opening, closing, and what its buttons do.
#include "ximag_int.h"

#include "draw/image_overlays.h"
#include "draw/image_picture.h"
#include "journal/journal.h"
#include "journal/store.h"
#include "signal/numbers.h"
#include "state/calls.h"
#include "state/defaults.h"
#include "state/run.h"
#include "state/user.h"
#include "state/write_out.h"
#include "toolkit/toolkit.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <cmath>

namespace norva {

image_window_hooks xi_hooks;
ximag_state xi;

constexpr double LEAST_SCALING = 0.01, MOST_SCALING = 100;

bool cut_window_stands() {
    return xi_hooks.xproc != nullptr;
}

bool ximag_heard() {
    return !msgwinon && !procwinon;
}

int ximag_count() {
    return xi.pip.count;
}

std::string ximag_action() {
    return xi.image_mode == PI_WRITE ? "Write Data File After Image Edit" : pi_action_name(xi.image_mode);
}

static bool polar_up() {
    return xi_hooks.polar_up && xi_hooks.polar_up();
}

// --- Opening

static int whole_default(float v) {
    return std::isfinite(v) ? static_cast<int>(std::clamp(v, -1e9f, 1e9f)) : 0;
}

static void take_defaults(proimag_parms& pip) {
    pip.wct = def.pi_wct;
    pip.dct = def.pi_dct;
    pip.ifx = whole_default(def.pi_ifx);
    pip.ify = whole_default(def.pi_ify);
    pip.apmn = def.pi_apmn;
    pip.npmx = whole_default(def.pi_npmx);
    pip.diam = def.pi_diam;
    pip.kscl = whole_default(def.pi_kscl);
}

static void take_data(proimag_parms& pip) {
    pip.nf = user.nf;
    pip.nt = user.nt;
    pip.kw = 1;
    pip.ksx = user.ksx >= 1 ? 1 : -1;
    pip.ksy = user.ksy >= 1 ? 1 : -1;
    pip.nbu = 1;
    pip.q = user.pfdata.data();
    pip.mc_level = user.mc.ptr;
}

// An image of the journal is formed as it was when it was stored.
static void take_stored_opening(proimag_parms& pip) {
    std::vector<std::int32_t> actions;
    if (!jary || !take_image_steps(jary.span(), actions, xi.steps)) return;
    pip.ifx = xi.steps.ifx;
    pip.ify = xi.steps.ify;
    pip.npmx = xi.steps.npmx;
    pip.kscl = xi.steps.kscl;
    pip.apmn = xi.steps.apmn;
    pip.diam = xi.steps.diam;
    pip.mode = xi.steps.polar ? PI_POLAR : PI_INIT;
}

static void note_opening(const proimag_parms& pip) {
    image_steps& s = xi.steps;
    s.ifx = pip.ifx;
    s.ify = pip.ify;
    s.npmx = pip.npmx;
    s.kscl = pip.kscl;
    s.apmn = pip.apmn;
    s.diam = pip.diam;
    s.polar = pip.mode == PI_POLAR;
    s.centred.clear();
    s.data_stale = false;
}

static bool fits(const proimag_parms& pip) {
    const auto samples = [](int factor, int n) {
        const std::int64_t wanted = static_cast<std::int64_t>(factor) * n;
        return static_cast<std::int64_t>(
            iradx2(static_cast<int>(std::min<std::int64_t>(wanted, PI_MAX_DATA + 1))));
    };
    return samples(pip.ifx, pip.nt) * samples(pip.ify, pip.nf) <= PI_MAX_DATA;
}

// Makes the factors fit. False when not even the data do.
static bool settle_factors(proimag_parms& pip) {
    pip.ifx = std::max(pip.ifx, 1);
    pip.ify = std::max(pip.ify, 1);
    if (fits(pip)) return true;
    if (static_cast<std::int64_t>(pip.nf) * pip.nt > PI_MAX_DATA) return false;
    pip.ifx = pip.ify = 1;
    return true;
}

static void stay_closed() {
    jary.clear();
    journal_hooks.enable_fields(1);
}

// A single frequency or a single time is no image but a cut.
static void open_one_dimensional() {
    if (!cut_window_stands()) {
        popmsg("A single time or a single frequency makes no image: there must be at least 3 of each.");
        stay_closed();
        return;
    }
    cut_request cut{.mode = 30, .lw = 2, .kc = 0, .n = 0, .c1 = 0, .dc = 0, .data = {}};
    if (user.nf != 1) {
        cut.kc = 2 * user.ksy;
        cut.n = user.nf;
        cut.c1 = user.f0;
        cut.dc = user.df;
    } else {
        cut.kc = user.ksx;
        cut.n = user.nt;
        cut.c1 = user.t0;
        cut.dc = user.dt;
    }
    cut.data.assign(user.pfdata.begin(), user.pfdata.begin() + 2 * static_cast<std::ptrdiff_t>(cut.n));
    xi_hooks.xproc(cut);
}

void ximag() {
    if (stsf) {
        open_one_dimensional();
        return;
    }
    proimag_parms& pip = xi.pip;
    if (imgwinon) xi_close_window();
    xi.steps = {};
    pip.mode = polar_up() ? PI_POLAR : PI_INIT;
    if (xi_hooks.geometry) xi.steps.geometry = *xi_hooks.geometry();
    take_data(pip);
    if (!xi.init) take_defaults(pip);
    pip.kflop = 1;
    pip.imgtype = IMG_PEAKS;
    pip.nx = pip.ny = 0;
    take_stored_opening(pip);
    if (!settle_factors(pip)) {
        popmsg(strprintf("Maximimum image size is %dx%d", 256, 512));
        stay_closed();
        return;
    }
    note_opening(pip);
    ximag_init();
    wi_on(ximag_window());
    twopt_close();
    close_scaling_windows();
    imgwinon = 1;
    if (!pi_apply(&pip)) {
        jary.clear();
        return;
    }
    if (jary) {
        pip.mode = PI_RESTORE;
        pi_apply(&pip);
    }
    xi.nclick = xi.freemv = xi.last_mode = 0;
    xi.center_mode = -1;
    xi.changed = false;
    whole_image_box();
    ximag_putvals(0);
    xi.init = true;
    ximag_show_style();
    ximag_reset_mbut();
    ximag_resize(nullptr, 0);
    ximag_refresh_controls();
}

// --- Closing

void xi_close_window() {
    xi_drop_picture();
    close_scaling_windows();
    twopt_close();
    if (ximag_window()) wi_off(ximag_window());
    imgwinon = 0;
    xi.nclick = xi.freemv = 0;
}

static void reset_axis() {
    xi_picture.xi_ascale = 1;
    if (ximag_window()) put_axis_scaling_field(1);
}

void kill_ximag() {
    xi_close_window();
    reset_axis();
    jary.clear();
    journal_hooks.enable_fields(1);
}

void ximag_leave() {
    jary.clear();
    xi_close_window();
    journal_hooks.enable_fields(1);
}

static void dismiss(wi_obj* obj) {
    xi_close_window();
    if (polar_up() && xi_hooks.polar_off) xi_hooks.polar_off();
    if (obj) xi.playback = 0;
    if (xi.playback) { // the journal holds what comes next
        xi.playback = 0;
        jary.clear();
        journal_hooks.enable_fields(1);
        mng_jrnl(nullptr, 1);
        return;
    }
    xi.pip.mode = PI_EXPORT;
    pi_apply(&xi.pip);
    // The opening and the closing belong together: a journal with room for one of them takes none.
    const bool room = journal_next_index() + 1 < JOURNAL_MAX_INDEX;
    if (room) {
        jrnl(28);
        jrnl(27);
    } else {
        popmsg("***Error in JOURNAL...INDX dimension exceeded");
    }
    jary.clear();
    journal_hooks.enable_fields(1);
    // The data of the position that the journal stands at, where a centering has made others of them.
    if (xi.steps.data_stale || (!room && !xi.steps.centred.empty())) mng_jrnl(nullptr, 0);
}

// --- Buttons

static void unzoom() {
    xi.pip.mode = XI_ZOOM;
    draw_vg_img(*xi.disp, IMG_UNZOOM, xi.pip.imgtype);
}

static void scale_axes(int tag) {
    double v = axis_scaling_field();
    if (tag == XI_AXIS_UP) v += v < 1 ? 0.1 : 1;
    if (tag == XI_AXIS_DOWN) v -= v < 1.5 ? 0.1 : 1;
    v = std::clamp(std::isfinite(v) ? v : 1.0, LEAST_SCALING, MOST_SCALING);
    put_axis_scaling_field(v);
    xi_picture.xi_ascale = static_cast<float>(v);
    if (xi.pip.imgtype != IMG_COLOR) draw_vg_img(*xi.disp, IMG_REDRAW, xi.pip.imgtype);
}

void ximag_new_file() {
    xi.init = false;
    reset_axis();
}

static bool scales_axes(int tag) {
    return tag >= XI_AXIS_UP && tag <= XI_AXIS_TYPED;
}

static bool acts_at_once(int tag) {
    return tag == PI_FLOP || tag == PI_PEAK_SCALING || tag == PI_INTERPOLATE || tag == XI_FLOP_V ||
           tag == PI_WRITE;
}

static void act(int tag) {
    proimag_parms& pip = xi.pip;
    if (tag == PI_FLOP || tag == XI_FLOP_V) {
        pip.mode = PI_FLOP;
        pip.kflop = tag == PI_FLOP ? 1 : 2;
    }
    ximag_getvals();
    if (pi_apply(&pip) && tag != PI_WRITE && tag != PI_PEAK_SCALING) whole_image_box();
    ximag_putvals(0);
}

void xi_arm(int mode) {
    xi.pip.mode = mode;
    xi_drop_readout();
    if (mode != PI_CENTER) xi_drop_crosshair();
    if (mode != PI_CUT) xi_drop_cut();
    if (mode != PI_EDIT) xi_drop_box();
    if (!xi.zmbox && !xi.cut) xi.nclick = 0;
    xi.freemv = mode == PI_CENTER || mode == PI_PEAK_PARAMETERS;
}

// What shows in the picture, and so has it rendered.
static bool changes_picture(int tag) {
    return acts_at_once(tag) || tag == XI_UNZOOM || scales_axes(tag);
}

static void press(int tag) {
    const int armed = xi.pip.mode;
    xi_arm(tag);
    if (acts_at_once(tag)) act(tag);
    if (tag == XI_UNZOOM) unzoom();
    if (scales_axes(tag)) {
        scale_axes(tag);
        xi_arm(armed);
    }
    ximag_reset_mbut();
    if (changes_picture(tag)) ximag_render();
}

static void hardcopy(wi_obj* obj) {
    const std::string file = ximag_hc();
    if (obj && !file.empty()) popmsg("Hardcopy written to " + file);
}

void ximag_bttn(wi_obj* obj, int tag) {
    if (obj && !ximag_heard()) {
        ximag_reset_mbut(); // a toggle has flipped before this call
        return;
    }
    if (!imgwinon || !xi_picture.frame) return;
    switch (tag) {
    case PI_STORE_CUT:
        xi.pip.mode = PI_STORE_CUT;
        pi_apply(&xi.pip);
        break;
    case PI_EXPORT: dismiss(obj); break;
    case XI_BACK: ximag_step(MIDDLE_BUTTON); break;
    case XI_HARDCOPY: hardcopy(obj); break;
    case XI_HELP: wi_hlp_srch("help:norva:image"); break;
    default: press(tag);
    }
}

// --- For the cut window

void ximag_newcut(const float* values) {
    proimag_parms& pip = xi.pip;
    if (values) {
        pip.wct = values[0];
        pip.dct = values[1];
        pip.xpv = values[2];
        pip.ypv = values[3];
        pip.ang = values[4];
        return;
    }
    ximag_putvals(1);
    ximag_fld_cb(nullptr, 9);
}

float ximag_ang() {
    return xi.pip.ang;
}

void ximag_reset_for_tests() {
    xi = {};
    jary.clear();
    xi_hooks = {};
    xi_picture = {};
    drop_vg_img();
    panel_reset();
    scaling_reset();
    twopt_reset();
}

} // namespace norva
