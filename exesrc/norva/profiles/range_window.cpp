// The range profile window: its controls and what each of them does.
#include "range_int.h"

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

namespace norva {

range_window_hooks rp_hooks;
range_state rp;

static struct {
    wi_obj *window = nullptr, *dismiss = nullptr, *help = nullptr, *buttons = nullptr, *hint = nullptr;
    wi_obj* area = nullptr;
} win;

static const char* const HELP_KEY = "help:norva:range profile";
constexpr int HELP = 102;

wi_obj* xrp_window() {
    return win.window;
}

void xrp_reset_for_tests() {
    rp = {};
    win = {};
    rp_hooks = {};
    plotwin_reset();
    ambs_dialog_reset();
}

// --- Building

static void xrp_expose(wi_obj*, int) {
    render();
}

static void xrp_resize(wi_obj*, int) {
    build_picture();
    rebuild_line();
    render();
}

static void make_window() {
    wi_set_window_name("NORVA: range profile");
    wi_obj* fm = win.window = wi_mk_form(nullptr, 670, 600);
    wi_hlp_setprog(fm, "norva:range profile");
    win.dismiss = wi_mk_button(wi_form_parent(fm, 8, 5, 88, 27), "DISMISS", 0, xrp_cb, 0);
    wi_mk_label(wi_form_parent(fm, 100, 5, 570, 27), "Range Profile Processing", 5);
    if (wi_hooks.help) win.help = wi_mk_button(wi_form_parent(fm, 582, 5, 662, 27), "HELP", 0, xrp_cb, HELP);

    wi_obj* row = win.buttons =
        wi_mk_butary(wi_form_parent(fm, 8, 32, 662, 56), 1, rp_hooks.xpk_init ? 6 : 5);
    wi_butary_button(row, "Rmv Line", 1, xrp_cb, 15);
    wi_butary_button(row, "Rmv Ambs", 0, xrp_cb, 100);
    wi_butary_button(row, "Rmv Drift", 0, xrp_cb, 13);
    wi_butary_button(row, "Center", 1, xrp_cb, 16);
    wi_butary_button(row, "Plot", 0, xrp_cb, 101);
    if (rp_hooks.xpk_init) wi_butary_button(row, "Peaks", 0, xrp_cb, 14);
    win.hint = wi_mk_label(wi_form_parent(fm, 8, 59, 662, 75), "", 1);

    win.area = wi_mk_drawarea(wi_form_parent(fm, 0, 78, 670, 600), xrp_expose, 0, xrp_resize, 0);
    wi_drawarea_mouse_cb(win.area, 0, xrp_mouse, 0);
    wi_drawarea_mouse_cb(win.area, 2, xrp_mouse, 1);
    wi_drawarea_mouse_cb(win.area, 3, xrp_mouse, 1);
    wi_zuvapp_quit(fm, 1, "DISMISS", xrp_cb, 0);
    wi_size(fm, 670, 600);
    wi_position(fm, 160, 10);
    norva_reg(fm, "Range Profile");
    rp.disp = vg_xw_init(wi_drawarea_getwidget(win.area), 1, 1, 0);
}

static void show_mode_buttons() {
    if (!win.window) return;
    wi_butary_setstate(win.buttons, "Rmv Line", rp.m_mode == MODE_LINE);
    wi_butary_setstate(win.buttons, "Center", rp.m_mode == MODE_CENTER);
    wi_label(win.hint, rp.m_mode == MODE_LINE
                           ? "Left button: two points along the track.  Right button: remove "
                             "the line's drift, or start over."
                       : rp.m_mode == MODE_CENTER ? "Left button: the range that moves to 0."
                                                  : "");
}

static void set_mode(int m) {
    rp.m_mode = m;
    show_mode_buttons();
}

void xrp(int tag) {
    plotwin_init();
    set_deltas(1);
    if (tag == 3) {
        xrp_cb(nullptr, -2);
        return;
    }
    if (!win.window) make_window();
    if (!rpwinon) wi_on(win.window); // a window that is up stays where it is among the others
    xrp_cb(nullptr, rpwinon ? -1 : -3);
    rpwinon = 1;
    if (tag != 2) jrnl(3);
    xrp_resize(nullptr, 0);
    xrp_refresh_controls();
}

void xrp_refresh_controls() {
    if (!win.window) return;
    const bool heard = !msgwinon && !pkswinon;
    wi_enable(win.dismiss, !msgwinon);
    wi_enable(win.buttons, heard);
    if (win.help) wi_enable(win.help, heard);
    if (rpwinon)
        plotwin_refresh_controls(
            {.heard = heard, .picture = true, .zoom = can_zoom(), .unzoom = rp.izoom > 0});
    ambs_dialog_refresh();
}

// --- Actions

static void dismiss(wi_obj* wo) {
    rp.izoom = 0;
    set_mode(MODE_NONE);
    drop_picture();
    if (plotwin_window()) plotwin_cb(nullptr, 1);
    rawin_init(nullptr, 0);
    if (win.window) wi_off(win.window);
    rpwinon = 0;
    if (wo) jrnl(1);
}

static void take_span(const time_span& span) {
    rp.span = span;
    plotwin_put_times(span.interval(), span.ctime);
}

static void change_centre(double ctime) {
    take_span(centred_span(range_records(), ctime, plotwin_interval()));
}

static void change_interval(double interval) {
    take_span(interval_span(range_records(), rp.span.ctime, interval));
}

static void reapply_time_fields() {
    const double interval = plotwin_interval(), centre = plotwin_centre();
    change_interval(interval);
    change_centre(centre);
}

static void recompute_zoomed() {
    const int n = rp.izoom;
    if (compute_profiles()) zoom_again(n);
}

static void unzoom() {
    if (rp.izoom == 0) return;
    const int n = rp.izoom - 1;
    restore_full_range();
    zoom_again(n);
    redraw();
}

static void begin_line() {
    const std::string refusal = correction_refused(2);
    if (refusal.empty())
        set_mode(MODE_LINE);
    else
        popmsg(refusal);
}

bool range_can_downsize() {
    return rp_hooks.downsize != nullptr;
}

void range_downsize() {
    remove_line();
    narrow_data(rp.span.stime, rp.span.etime, [] { xrp_cb(nullptr, 0); });
}

// A button of this window was pressed: the one of a mode stays down, others release it.
static bool own_button(int tag) {
    return tag == 0 || (tag >= 13 && tag <= 16) || (tag >= 100 && tag <= HELP);
}

void xrp_cb(wi_obj* wo, int tag) {
    plotwin_init();
    remove_line();
    if (wo && (msgwinon || (pkswinon && tag > 0 && tag != 130))) {
        show_mode_buttons(); // a toggle has flipped before this call
        return;
    }
    if (wo && rpwinon && own_button(tag)) set_mode(MODE_NONE);
    switch (tag) {
    case 0: dismiss(wo); break;
    case 4: change_centre(plotwin_centre() + def.rp_ct_inc); break;
    case 5: change_centre(plotwin_centre() - def.rp_ct_inc); break;
    case 6: change_centre(plotwin_centre()); break;
    case 7:
        zoom_once();
        if (wo) redraw();
        break;
    case 8: unzoom(); break;
    case 10: change_interval(plotwin_interval() + def.rp_ti_inc); break;
    case 11: change_interval(plotwin_interval() - def.rp_ti_inc); break;
    case 12: change_interval(plotwin_interval()); break;
    case 13:
        xrp_mocomp(1, 0);
        compute_profiles();
        redraw();
        break;
    case 14:
        if (!rp_hooks.xpk_init) break;
        pkswinon = 1;
        rp_hooks.xpk_init(1);
        break;
    case 15: begin_line(); break;
    case 16: set_mode(MODE_CENTER); break;
    case 18: {
        const std::string file = range_hardcopy();
        if (wo && !file.empty()) popmsg("Hardcopy written to " + file);
        break;
    }
    case 100: rawin_init(wo, 1); break;
    case 101: plotwin_cb(nullptr, 0); break;
    case HELP: wi_hlp_srch(HELP_KEY); break;
    case 130:
        xrp_mocomp(3, 0);
        if (rpwinon) {
            restore_full_range();
            redraw();
        } else {
            compute_profiles();
        }
        break;
    case -1:
        take_span(whole_span(range_records()));
        recompute_zoomed();
        redraw();
        break;
    case -2: compute_profiles(); break;
    case -3:
        take_span(whole_span(range_records()));
        recompute_zoomed();
        build_picture();
        break;
    case -4:
        reapply_time_fields();
        recompute_zoomed();
        redraw();
        break;
    case -5:
        reapply_time_fields();
        redraw();
        break;
    }
    xrp_refresh_controls();
}

} // namespace norva
