// The Doppler profile window: its controls and what each of them does.
#include "doppler_int.h"

#include "journal/journal.h"
#include "profile_parts.h"
#include "profiles/plot_window.h"
#include "state/calls.h"
#include "state/defaults.h"
#include "state/run.h"
#include "state/user.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <cmath>

namespace norva {

doppler_window_hooks dp_hooks;
doppler_state dp;

static struct {
    wi_obj *window = nullptr, *dismiss = nullptr, *help = nullptr, *hint = nullptr, *area = nullptr;
    wi_obj *wdw = nullptr, *ifact = nullptr, *lag = nullptr, *init = nullptr;
    wi_obj *drift = nullptr, *center = nullptr, *plot = nullptr, *peaks = nullptr;
} win;

static const char* const HELP_KEY = "help:norva:doppler profile";

wi_obj* xdp_window() {
    return win.window;
}

void xdp_reset_for_tests() {
    dp = {};
    win = {};
    dp_hooks = {};
}

// --- Parameters

// What is typed in a field, as a whole number; text that is no number counts as 0.
static int typed(const wi_obj* field) {
    const double v = wi_incdecfld_getval(field);
    return std::isfinite(v) ? static_cast<int>(std::clamp(v, -1e9, 1e9)) : 0;
}

static void put_fields(int wdw, int ifact, int lag) {
    clamp_parameters(wdw, ifact, lag);
    wi_incdecfld_putval(win.wdw, wdw);
    wi_incdecfld_putval(win.ifact, ifact);
    wi_incdecfld_putval(win.lag, lag);
}

static void load_fields() {
    if (win.window) put_fields(user.dp_ni, user.dp_ip, user.dp_lag);
}

void doppler_take_fields() {
    if (dpwinon && win.window) { // what a hidden window shows may be older than the record
        user.dp_ni = typed(win.wdw);
        user.dp_ip = typed(win.ifact);
        user.dp_lag = typed(win.lag);
    }
    clamp_parameters(user.dp_ni, user.dp_ip, user.dp_lag);
    load_fields();
}

// --- Building

static void xdp_expose(wi_obj*, int) {
    render_doppler();
}

static void xdp_resize(wi_obj*, int) {
    build_doppler();
    render_doppler();
}

static void help_cb(wi_obj*, int) {
    wi_hlp_srch(HELP_KEY);
}

static wi_obj* add_field(wi_obj* form, double x, double width, const char* label, double split, int up) {
    wi_obj* field = wi_mk_incdecfld(wi_form_parent(form, x, 32, x + width, 56), label, split, 1);
    wi_incdecfld_decimals(field, 0);
    wi_incdecfld_set_cb(field, xdp_ok, up, xdp_ok, up + 1, xdp_ok, up + 2);
    return field;
}

static void make_window() {
    wi_set_window_name("NORVA: Doppler profile");
    wi_obj* fm = win.window = wi_mk_form(nullptr, 650, 650);
    wi_hlp_setprog(fm, "norva:doppler profile");
    win.dismiss = wi_mk_button(wi_form_parent(fm, 8, 5, 88, 27), "DISMISS", 0, xdp_cb, 0);
    wi_mk_label(wi_form_parent(fm, 100, 5, 550, 27), "Doppler Profile Processing", 5);
    if (wi_hooks.help) win.help = wi_mk_button(wi_form_parent(fm, 562, 5, 642, 27), "HELP", 0, help_cb, 0);

    win.wdw = add_field(fm, 8, 140, "WDW:", 0.36, 1);
    win.ifact = add_field(fm, 168, 140, "IFACT:", 0.4, 4);
    win.lag = add_field(fm, 328, 140, "LAG:", 0.36, 7);
    wi_set_tooltip(win.wdw, "Records in the sliding window, 1 to 512");
    wi_set_tooltip(win.ifact, "Interpolation factor of the transform, 1 to 16");
    wi_set_tooltip(win.lag, "Records from one window position to the next");
    win.init = wi_mk_button(wi_form_parent(fm, 488, 32, 642, 56), "INITIALIZE", 0, xdp_ok, 0);

    wi_obj* row = wi_mk_butary(wi_form_parent(fm, 8, 60, 642, 84), 1, dp_hooks.xpk_init ? 4 : 3);
    win.drift = wi_butary_button(row, "Rmv Drift", 0, xdp_cb, 13);
    win.center = wi_butary_button(row, "Center", 1, xdp_cb, 15);
    win.plot = wi_butary_button(row, "Plot", 0, plotwin_cb, 0);
    if (dp_hooks.xpk_init) win.peaks = wi_butary_button(row, "Peaks", 0, xdp_cb, 14);
    win.hint = wi_mk_label(wi_form_parent(fm, 8, 87, 642, 103), "", 1);

    win.area = wi_mk_drawarea(wi_form_parent(fm, 0, 106, 650, 650), xdp_expose, 0, xdp_resize, 0);
    wi_drawarea_mouse_cb(win.area, 0, xdp_mouse, 0);
    wi_zuvapp_quit(fm, 1, "DISMISS", xdp_cb, 0);
    wi_size(fm, 650, 650);
    wi_position(fm, 160, 10);
    norva_reg(fm, "Doppler Profile");
    dp.disp = vg_xw_init(wi_drawarea_getwidget(win.area), 1, 1, 0);
}

void xdp_refresh_controls() {
    if (!win.window) return;
    const bool heard = !msgwinon && !pkswinon, ready = !msgwinon && dp.okset;
    for (wi_obj* wo : {win.dismiss, win.help, win.wdw, win.ifact, win.lag, win.init, win.plot})
        if (wo) wi_enable(wo, heard);
    wi_enable(win.drift, ready && dp.izoom == 0);
    wi_enable(win.center, ready);
    if (win.peaks) wi_enable(win.peaks, ready);
    if (dpwinon)
        plotwin_refresh_controls(
            {.heard = heard, .picture = dp.okset, .zoom = doppler_can_zoom(), .unzoom = dp.izoom > 0});
    wi_button_setstate(win.center, dp.m_mode == DP_MODE_CENTER); // a toggle flips before its call
    wi_label(win.hint, !dp.okset                     ? "Set WDW, IFACT and LAG, then press INITIALIZE."
                       : dp.m_mode == DP_MODE_CENTER ? "Left button: the Doppler that moves to 0."
                                                     : "");
}

void xdp() {
    if (msgwinon && !managing) return;
    if (!win.window) {
        user.dpdata.clear();
        user.dp_w.clear();
        make_window();
    }
    plotwin_init();
    set_deltas(2);
    drop_doppler();
    if (!dpwinon) wi_on(win.window);
    dpwinon = 1;
    dp.okset = false;
    dp.izoom = 0;
    dp.m_mode = DP_MODE_NONE;
    load_fields();
    jrnl(29);
    xdp_resize(nullptr, 0);
    xdp_refresh_controls();
}

// --- Actions

static void initialize(wi_obj* wo) {
    dp.m_mode = DP_MODE_NONE;
    if (!wo) load_fields();
    xdp_cb(nullptr, -3);
    if (dp.okset) jrnl(30);
    render_doppler();
}

void xdp_ok(wi_obj* wo, int tag) {
    if (wo && (msgwinon || pkswinon)) return;
    if (tag == 0) {
        initialize(wo);
        xdp_refresh_controls();
        return;
    }
    if (!win.window) return;
    int wdw = typed(win.wdw), ifact = typed(win.ifact), lag = typed(win.lag);
    switch (tag) {
    case 1: wdw++; break;
    case 2: wdw--; break;
    case 4: ifact *= 2; break;
    case 5: ifact /= 2; break;
    case 7: lag++; break;
    case 8: lag--; break;
    }
    put_fields(wdw, ifact, lag);
}

static void dismiss(wi_obj* wo) {
    if (have_doppler()) {
        const time_span whole = whole_span(doppler_rows());
        plotwin_put_times(whole.interval(), whole.ctime);
    }
    dp.izoom = 0;
    dp.okset = false;
    dp.m_mode = DP_MODE_NONE;
    drop_doppler();
    if (plotwin_window()) plotwin_cb(nullptr, 1);
    if (win.window) wi_off(win.window);
    dpwinon = 0;
    if (wo) jrnl(1);
}

static void take_span(const time_span& span) {
    dp.span = span;
    plotwin_put_times(span.interval(), span.ctime);
}

static void change_centre(double ctime) {
    if (ctime < user.t0) ctime = user.dp_t0;
    take_span(centred_span(doppler_rows(), ctime, plotwin_interval()));
}

static void change_interval(double interval) {
    take_span(interval_span(doppler_rows(), dp.span.ctime, interval));
}

static void reapply_time_fields() {
    const double interval = plotwin_interval(), centre = plotwin_centre();
    change_interval(interval);
    change_centre(centre);
}

static void draw_or_drop() {
    build_doppler();
    render_doppler();
}

// Forms the profiles anew, over their full time span.
static bool recompute() {
    plotwin_init();
    set_deltas(2);
    if (!compute_doppler()) return false;
    take_span(whole_span(doppler_rows()));
    return true;
}

static void recompute_zoomed(int n) {
    if (recompute()) doppler_zoom_again(n);
}

// A setting of the plot has changed: the displayed time span stays.
static void recompute_in_span() {
    const int n = dp.izoom;
    const time_span span = dp.span;
    if (!recompute()) return;
    take_span(span);
    doppler_zoom_again(n);
}

static void unzoom() {
    if (dp.izoom == 0) return;
    recompute_zoomed(dp.izoom - 1);
    draw_or_drop();
}

void doppler_downsize() {
    if (!have_doppler()) return;
    const record_times rows = doppler_rows();
    double stime = dp.span.stime, etime = dp.span.etime;
    const record_range shown = snap_to_records(rows.t0, rows.dt, rows.nt, stime, etime);
    stime = dp.span.stime;
    etime = dp.span.etime;
    if (shown.last - shown.first == rows.nt) { // the windows at the ends reach over all records
        stime = user.t0;
        etime = user.t0 + static_cast<double>(user.nt) * user.dt;
    }
    narrow_data(stime, etime, [] { xdp_cb(nullptr, 0); });
}

// What the user's click may do now; calls from inside the program pass, but need profiles all the same.
static bool heard(const wi_obj* wo, int tag) {
    if (wo && msgwinon) return false;
    if (wo && pkswinon && tag != 13 && tag != 14 && tag != 15) return false;
    return dp.okset || (tag <= 0 && tag != -4 && tag != -5);
}

static void act(wi_obj* wo, int tag) {
    switch (tag) {
    case 0: dismiss(wo); break;
    case 1: {
        const std::string file = doppler_hardcopy();
        if (wo && !file.empty()) popmsg("Hardcopy written to " + file);
        break;
    }
    case 4: change_centre(plotwin_centre() + def.dp_ct_inc); break;
    case 5: change_centre(plotwin_centre() - def.dp_ct_inc); break;
    case 6: change_centre(plotwin_centre()); break;
    case 7:
        doppler_zoom_once();
        if (wo) draw_or_drop();
        break;
    case 8: unzoom(); break;
    case 10: change_interval(plotwin_interval() + def.dp_ti_inc); break;
    case 11: change_interval(plotwin_interval() - def.dp_ti_inc); break;
    case 12: change_interval(plotwin_interval()); break;
    case 13:
        if (dp.izoom != 0) break;
        dp.m_mode = DP_MODE_NONE;
        xdp_mocomp(1);
        break;
    case 14:
        if (!dp_hooks.xpk_init) break;
        dp.m_mode = DP_MODE_NONE;
        pkswinon = 1;
        dp_hooks.xpk_init(2);
        break;
    case 15: dp.m_mode = DP_MODE_CENTER; break;
    case -1:
        if (managing) load_fields();
        doppler_take_fields();
        recompute_zoomed(dp.izoom);
        draw_or_drop();
        break;
    case -2: recompute(); break;
    case -3:
        doppler_take_fields();
        recompute_zoomed(dp.izoom);
        build_doppler();
        break;
    case -4:
        reapply_time_fields();
        recompute_in_span();
        draw_or_drop();
        break;
    case -5: // the profiles are those of the present data and parameters already
        reapply_time_fields();
        draw_or_drop();
        break;
    }
}

void xdp_cb(wi_obj* wo, int tag) {
    if (heard(wo, tag)) act(wo, tag);
    xdp_refresh_controls();
}

} // namespace norva
