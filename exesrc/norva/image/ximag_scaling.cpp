// The scaling windows of the three display types: peaks, contours, colours.
#include "ximag_int.h"

#include "draw/image_picture.h"
#include "state/defaults.h"
#include "state/run.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace norva {

constexpr int DISMISS = 0, TYPED = 1, CLIP_UP = 3, CLIP_DOWN = 4, TOGGLE_DB = 5;
static const char* const dot_scalings[3] = {"power", "amplitude", "sqrt of amplitude"};

static struct {
    wi_obj* window = nullptr;
    wi_obj *peaks = nullptr, *noise = nullptr, *factor = nullptr, *low = nullptr, *high = nullptr,
           *diam = nullptr, *dots = nullptr;
    int kscl = 1; // what "Scaling of dot:" shows
    bool on = false;
} ps;

static struct { wi_obj *window = nullptr, *dc = nullptr, *nc = nullptr, *kc = nullptr; } cs;

static struct {
    wi_obj *window = nullptr, *low = nullptr, *delta = nullptr, *mode = nullptr;
    bool db = false;
    double other = -20; // low clip of the mode that is not shown
} gs;

void scaling_reset() {
    ps = {};
    cs = {};
    gs = {};
}

static double within(double v, double low, double high) {
    return std::isfinite(v) ? std::clamp(v, low, high) : low;
}

static void show_scaled() {
    take_picture_scaling();
    show_image_again();
}

static wi_obj* begin_window(const char* name, const char* label, int width, int height, const char* help) {
    wi_set_window_name(name);
    wi_obj* fm = wi_mk_form(nullptr, width, height);
    wi_hlp_setprog(fm, help);
    wi_size(fm, width, height);
    wi_position(fm, 750, 0);
    norva_reg(fm, label);
    the_port().keep_above(getparenthandle(fm));
    return fm;
}

// Lines of 23 units, with 3 in between.
static wi_obj* line(wi_obj* fm, int i, double x0, double x1) {
    const double y = 5 + 26 * i;
    return wi_form_parent(fm, x0, y, x1, y + 23);
}

// --- Peaks

void step_dot_scaling(int by) {
    if (!ps.window) return;
    ps.kscl = (ps.kscl - 1 + by + 3) % 3 + 1;
    wi_incdecfld_putstr(ps.dots, dot_scalings[ps.kscl - 1]);
}

void step_peaks(int direction) {
    if (!ps.window) return;
    const double v = wi_incdecfld_getval(ps.peaks) + direction * def.pi_npmx_inc;
    wi_incdecfld_putval(ps.peaks, within(v, 1, PI_MAX_PEAKS));
}

void put_peak_scaling() {
    if (!ps.window) return;
    const proimag_parms& pip = xi.pip;
    wi_incdecfld_putval(ps.peaks, pip.npmx);
    wi_numfld_putval(ps.low, pip.apmn);
    wi_numfld_putval(ps.high, xi.hclip);
    wi_numfld_putval(ps.diam, pip.diam);
    ps.kscl = std::clamp(pip.kscl, 1, 3);
    wi_incdecfld_putstr(ps.dots, dot_scalings[ps.kscl - 1]);
}

void read_peak_scaling() {
    if (!ps.window) return;
    proimag_parms& pip = xi.pip;
    const double most_peaks = within(def.pi_npmx_max, 1, PI_MAX_PEAKS);
    pip.npmx = static_cast<int>(within(wi_incdecfld_getval(ps.peaks), 1, most_peaks));
    pip.apmn = static_cast<float>(within(wi_numfld_getval(ps.low), 0, 1));
    pip.diam = static_cast<float>(within(wi_numfld_getval(ps.diam), 0, std::max(0.0f, def.pi_diam_max)));
    pip.kscl = ps.kscl;
    xi.hclip = std::min(
        1.0f, std::max(static_cast<float>(within(wi_numfld_getval(ps.high), 0, 1)), pip.apmn + 0.01f));
    if (wi_button_getstate(ps.noise))
        pip.apmn = -static_cast<float>(within(wi_numfld_getval(ps.factor), 0, 1e6));
}

bool peak_scaling_up() {
    return ps.on;
}

void close_peak_scaling() {
    if (ps.on) wi_off(ps.window);
    ps.on = false;
}

static void pswin_cb(wi_obj*, int) {
    close_peak_scaling();
}

static void build_pswin() {
    wi_obj* fm = ps.window = begin_window("NORVA: image: peak scaling", "Image Peak Scaling", 400, 190,
                                          "norva:image:image type:peaks");
    ps.peaks = wi_mk_incdecfld(line(fm, 0, 8, 392), "# of peaks:", 0.6, 1);
    wi_incdecfld_decimals(ps.peaks, 0);
    wi_incdecfld_set_cb(ps.peaks, ximag_fld_cb, 10, ximag_fld_cb, 11, nullptr, 0);
    ps.noise = wi_mk_button(line(fm, 1, 8, 300), "Low clip to this factor * (avg noise):", 1, nullptr, 0);
    ps.factor = wi_mk_numfld(line(fm, 1, 304, 392), "", 0.02, 2);
    wi_numfld_putval(ps.factor, 1);
    ps.low = wi_mk_numfld(line(fm, 2, 8, 392), "Low amplitude threshold:", 0.6, 4);
    ps.high = wi_mk_numfld(line(fm, 3, 8, 392), "High amplitude threshold:", 0.6, 4);
    ps.diam = wi_mk_numfld(line(fm, 4, 8, 392), "Diam highest peak:", 0.6, 2);
    ps.dots = wi_mk_incdecfld(line(fm, 5, 8, 392), "Scaling of dot:", 0.6, 1);
    wi_incdecfld_set_cb(ps.dots, ximag_fld_cb, 3, ximag_fld_cb, 4, nullptr, 0);
    wi_mk_button(line(fm, 6, 8, 120), "DISMISS", 0, pswin_cb, DISMISS);
    wi_mk_button(line(fm, 6, 280, 392), "APPLY", 0, ximag_bttn, PI_PEAK_SCALING);
    wi_zuvapp_quit(fm, 1, "DISMISS", pswin_cb, DISMISS);
}

// --- Contours

static void ximag_cswin_getvals(image_scaling& s) {
    if (!cs.window) return;
    s.dc = static_cast<float>(within(wi_incdecfld_getval(cs.dc), 1, 50));
    s.nc = static_cast<int>(within(wi_incdecfld_getval(cs.nc), 1, IMG_MAX_CONTOURS));
    s.kc = static_cast<int>(within(wi_incdecfld_getval(cs.kc), 0, 20));
    wi_incdecfld_putval(cs.dc, s.dc);
    wi_incdecfld_putval(cs.nc, s.nc);
    wi_incdecfld_putval(cs.kc, s.kc);
}

static void cswin_cb(wi_obj*, int tag) {
    if (tag == DISMISS)
        wi_off(cs.window);
    else if (ximag_heard() && imgwinon)
        show_scaled();
}

static wi_obj* limited_field(wi_obj* fm, int i, const char* label, int decimals, double low, double high,
                             double v, wi_cb typed) {
    wi_obj* field = wi_mk_incdecfld(line(fm, i, 8, 292), label, 0.6, 1);
    wi_incdecfld_decimals(field, decimals);
    wi_incdecfld_botlim(field, 1, low);
    wi_incdecfld_toplim(field, 1, high);
    wi_incdecfld_set_cb(field, nullptr, 0, nullptr, 0, typed, TYPED);
    wi_incdecfld_putval(field, v);
    return field;
}

static void add_ends(wi_obj* fm, int i, wi_cb cb) {
    wi_mk_button(line(fm, i, 8, 110), "DISMISS", 0, cb, DISMISS);
    wi_mk_button(line(fm, i, 190, 292), "APPLY", 0, cb, TYPED);
    wi_zuvapp_quit(fm, 1, "DISMISS", cb, DISMISS);
}

static void cswin_init() {
    if (!cs.window) {
        const image_scaling start;
        wi_obj* fm = cs.window = begin_window("NORVA: image: contour scaling", "Image Contour Scaling", 300,
                                              150, "norva:image:image type:contours");
        cs.dc = limited_field(fm, 0, "delta dB:", 1, 1, 50, start.dc, cswin_cb);
        cs.nc = limited_field(fm, 1, "# of contours:", 0, 1, IMG_MAX_CONTOURS, start.nc, cswin_cb);
        cs.kc = limited_field(fm, 2, "labels:", 0, 0, 20, start.kc, cswin_cb);
        add_ends(fm, 4, cswin_cb);
    }
    wi_on(cs.window);
}

// --- Colours

static double clip_within(double v) {
    return gs.db ? within(v, -100, 0) : std::isfinite(v) ? std::clamp(v, 0.0, 1.0) : 0.05;
}

static void ximag_gswin_putvals(double low) {
    wi_incdecfld_label(gs.low, gs.db ? "low clip (dB):" : "low clip (0. - 1.):");
    wi_incdecfld_putval(gs.low, low);
    wi_button_setstate(gs.mode, gs.db);
    if (gs.db)
        wi_on(gs.delta);
    else
        wi_off(gs.delta);
}

static void ximag_gswin_getvals(image_scaling& s) {
    if (!gs.window) return;
    s.db = gs.db;
    s.low_clip = static_cast<float>(clip_within(wi_incdecfld_getval(gs.low)));
    s.grd = std::max(1, get_ncolors());
    wi_incdecfld_putval(gs.low, s.low_clip);
    if (!gs.db) return;
    s.delta = static_cast<float>(within(wi_incdecfld_getval(gs.delta), 3, 50));
    wi_incdecfld_putval(gs.delta, s.delta);
}

static void gswin_cb(wi_obj*, int tag) {
    if (tag == DISMISS) {
        wi_off(gs.window);
        return;
    }
    if (!ximag_heard() || !imgwinon) {
        wi_button_setstate(gs.mode, gs.db);
        return;
    }
    const double low = clip_within(wi_incdecfld_getval(gs.low)), step = gs.db ? 5 : 0.05;
    if (tag == CLIP_UP) wi_incdecfld_putval(gs.low, clip_within(low + step));
    if (tag == CLIP_DOWN) wi_incdecfld_putval(gs.low, clip_within(low - step));
    if (tag == TOGGLE_DB) {
        gs.db = !gs.db;
        ximag_gswin_putvals(std::exchange(gs.other, low));
    }
    show_scaled();
}

static void gswin_init() {
    if (!gs.window) {
        wi_obj* fm = gs.window = begin_window("NORVA: image: color intensity", "Image Color Intensity", 300,
                                              150, "norva:image:image type:color intensity");
        gs.low = limited_field(fm, 0, "low clip:", 3, -100, 1, 0.05, gswin_cb);
        wi_incdecfld_set_cb(gs.low, gswin_cb, CLIP_UP, gswin_cb, CLIP_DOWN, gswin_cb, TYPED);
        gs.mode = wi_mk_button(line(fm, 1, 8, 292), "Scale in dB", 1, gswin_cb, TOGGLE_DB);
        gs.delta = limited_field(fm, 2, "delta dB:", 1, 5, 50, 10, gswin_cb);
        add_ends(fm, 4, gswin_cb);
    }
    wi_on(gs.window);
    ximag_gswin_putvals(wi_incdecfld_getval(gs.low));
}

// --- All three

void take_picture_scaling() {
    ximag_cswin_getvals(xi_picture.scaling);
    ximag_gswin_getvals(xi_picture.scaling);
}

void close_scaling_windows() {
    close_peak_scaling();
    if (cs.window) wi_off(cs.window);
    if (gs.window) wi_off(gs.window);
}

void scaling_refresh() {
    for (wi_obj* window : {ps.window, cs.window, gs.window})
        if (window) wi_enable(window, ximag_heard());
}

void pswin_init(wi_obj* obj, int) {
    if ((obj && !ximag_heard()) || !imgwinon) return;
    xi_arm(PI_PEAK_SCALING);
    if (xi.pip.imgtype == IMG_CONTOURS) {
        cswin_init();
    } else if (xi.pip.imgtype == IMG_COLOR) {
        gswin_init();
    } else {
        if (!ps.window) build_pswin();
        put_peak_scaling();
        ps.on = true;
        wi_on(ps.window);
    }
    ximag_reset_mbut();
}

void style_cb(wi_obj* obj, int tag) {
    if (!imgwinon) return;
    if (!obj || ximag_heard()) {
        proimag_parms& pip = xi.pip;
        pip.imgtype = tag;
        close_scaling_windows();
        if (pip.mode == PI_PEAK_SCALING) xi_arm(cut_window_stands() ? PI_CUT : xi.image_mode);
        ximag_reset_mbut();
        take_picture_scaling();
        show_image_again();
    }
    ximag_show_style(); // the mark has changed before this call
}

} // namespace norva
