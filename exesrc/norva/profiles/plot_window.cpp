// The profile plotting control window.
#include "profiles/plot_window.h"

#include "doppler_int.h"
#include "profiles/draw_vg_rp.h"
#include "profiles/range_window.h"
#include "range_int.h"
#include "state/defaults.h"
#include "state/run.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace norva {

// Tags of the controls. 4 to 12 are those of the profile window and are passed on to it.
constexpr int SHOW = 0, DISMISS = 1, INTERP_TYPED = 15, INTERP_UP = 16, INTERP_DOWN = 17;
constexpr int HEIGHT_UP = 20, HEIGHT_DOWN = 21, HEIGHT_TYPED = 22;
constexpr int TRUNC_UP = 23, TRUNC_DOWN = 24, TRUNC_TYPED = 25;
constexpr int SCALING = 26, HARDCOPY = 27, DOWNSIZE = 28, HELP = 29;

constexpr double LEAST_HEIGHT = 0.1, MOST_HEIGHT = 100, LEAST_TRUNCATION = 0.01;
static const char* const HELP_KEY = "help:norva:profile plotting";

// A profile window that the controls can serve.
struct plot_client {
    int kind;
    wi_cb cb;               // its handler
    int hardcopy_tag;       // of that handler
    void (*downsize)();     // narrows the window of data to the displayed time span
    bool (*can_downsize)(); // false: the button is not offered
    float defaults::*interpolation, defaults::*interpolation_max;
    float defaults::*height, defaults::*height_inc, defaults::*truncation, defaults::*truncation_inc;
};
static const plot_client clients[] = {
    {1, xrp_cb, 18, range_downsize, range_can_downsize, &defaults::rp_if, &defaults::rp_if_max,
     &defaults::rp_pkht, &defaults::rp_ph_inc, &defaults::rp_trun, &defaults::rp_pt_inc},
    {2, xdp_cb, 1, doppler_downsize, range_can_downsize, &defaults::rp_if, &defaults::rp_if_max,
     &defaults::dp_pkht, &defaults::dp_ph_inc, &defaults::dp_trun, &defaults::dp_pt_inc},
};

// An increment field and its number, which is kept to full precision while the text stays as it was put.
struct number_control {
    wi_obj* wo = nullptr;
    double value = 0;
    std::string shown;

    void put(double v) {
        value = v;
        wi_incdecfld_putval(wo, v);
        shown = wi_incdecfld_getstr(wo);
    }
    double get() {
        if (wi_incdecfld_getstr(wo) != shown) {
            const double typed = wi_incdecfld_getval(wo);
            put(std::isfinite(typed) ? typed : value);
        }
        return value;
    }
    void put_within(double v, double low, double high) {
        put(std::isfinite(v) ? std::min(std::max(v, low), std::max(low, high)) : low);
    }
};

// A setting follows its user default when that has changed, and otherwise stays as the user has put it.
struct default_follower {
    float seen = -1; // no default is negative

    bool changed(float now) {
        const bool fresh = now != seen;
        seen = now;
        return fresh;
    }
};

// Settings with a default for each client.
struct client_settings {
    default_follower height_default, truncation_default;
    double height = 1, truncation = 1;
};

static struct {
    wi_obj* window = nullptr;
    number_control interpolation, interval, centre, height, truncation;
    default_follower interpolation_default;
    wi_obj *scaling = nullptr, *zoom = nullptr, *unzoom = nullptr, *actions = nullptr;
    const plot_client* client = &clients[0];
    client_settings own[2]; // of each client, while the other one is served
} pw;

wi_obj* plotwin_window() {
    return pw.window;
}

static double most_interpolation() {
    return std::max(1.0, static_cast<double>(def.*pw.client->interpolation_max));
}

plot_settings plotwin_settings() {
    return {pw.interpolation.value, pw.height.value, pw.truncation.value,
            std::max(0, wi_listsel_getindex(pw.scaling))};
}

void plotwin_put_interpolation(double factor) {
    pw.interpolation.put_within(factor, 1, most_interpolation());
}

double plotwin_interval() {
    return pw.interval.get();
}

double plotwin_centre() {
    return pw.centre.get();
}

void plotwin_put_times(double interval, double centre) {
    pw.interval.put(interval);
    pw.centre.put(centre);
}

void set_deltas(int kind) {
    plotwin_init();
    pw.own[pw.client - clients].height = pw.height.value;
    pw.own[pw.client - clients].truncation = pw.truncation.value;
    for (const plot_client& c : clients)
        if (c.kind == kind) pw.client = &c;
    const plot_client& c = *pw.client;
    client_settings& own = pw.own[pw.client - clients];
    if (pw.interpolation_default.changed(def.*c.interpolation))
        plotwin_put_interpolation(def.*c.interpolation);
    if (own.height_default.changed(def.*c.height)) own.height = def.*c.height;
    if (own.truncation_default.changed(def.*c.truncation)) own.truncation = def.*c.truncation;
    pw.height.put_within(own.height, LEAST_HEIGHT, MOST_HEIGHT);
    pw.truncation.put_within(own.truncation, LEAST_TRUNCATION, 1);
}

void pjplot(int tag) {
    pw.client->cb(nullptr, tag);
}

static void step_height(double by) {
    pw.height.put_within(pw.height.get() + by, LEAST_HEIGHT, MOST_HEIGHT);
    pjplot(-5);
}

static void step_truncation(double by) {
    pw.truncation.put_within(pw.truncation.get() + by, LEAST_TRUNCATION, 1);
    pjplot(-5);
}

static void scale_interpolation(double factor) {
    plotwin_put_interpolation(pw.interpolation.get() * factor);
    pjplot(-4);
}

void plotwin_cb(wi_obj* wo, int tag) {
    if (wo && (msgwinon || (pkswinon && tag != DISMISS))) return;
    const plot_client& c = *pw.client;
    switch (tag) {
    case SHOW: wi_on(pw.window); break;
    case DISMISS: wi_off(pw.window); break;
    case 4:
    case 5:
    case 6:
    case 10:
    case 11:
    case 12:
        c.cb(wo, tag);
        pjplot(-5);
        break;
    case 7:
    case 8: c.cb(wo, tag); break;
    case INTERP_TYPED:
        plotwin_put_interpolation(pw.interpolation.get());
        if (wo) pjplot(-4);
        break;
    case INTERP_UP: scale_interpolation(2); break;
    case INTERP_DOWN: scale_interpolation(0.5); break;
    case HEIGHT_UP: step_height(def.*c.height_inc); break;
    case HEIGHT_DOWN: step_height(-(def.*c.height_inc)); break;
    case HEIGHT_TYPED: step_height(0); break;
    case TRUNC_UP: step_truncation(def.*c.truncation_inc); break;
    case TRUNC_DOWN: step_truncation(-(def.*c.truncation_inc)); break;
    case TRUNC_TYPED: step_truncation(0); break;
    case SCALING: pjplot(-4); break;
    case HARDCOPY: c.cb(wo, c.hardcopy_tag); break;
    case DOWNSIZE: c.downsize(); break;
    case HELP: wi_hlp_srch(HELP_KEY); break;
    }
}

// --- Building

static wi_obj* add_field(wi_obj* form, int row, const char* label, int ndec, int up, int down, int typed) {
    const double y = 34 + 26 * row;
    wi_obj* field = wi_mk_incdecfld(wi_form_parent(form, 8, y, 252, y + 24), label, 0.55, 1);
    wi_incdecfld_decimals(field, ndec);
    wi_incdecfld_set_cb(field, plotwin_cb, up, plotwin_cb, down, plotwin_cb, typed);
    return field;
}

void plotwin_init() {
    if (pw.window) return;
    wi_set_window_name("NORVA: profile plotting");
    wi_obj* fm = pw.window = wi_mk_form(nullptr, 260, 270);
    wi_hlp_setprog(fm, "norva:profile plotting");
    wi_mk_button(wi_form_parent(fm, 8, 6, 78, 28), "DISMISS", 0, plotwin_cb, DISMISS);
    wi_mk_label(wi_form_parent(fm, 80, 6, 180, 28), "Profile Plotting", 1);
    if (wi_hooks.help) wi_mk_button(wi_form_parent(fm, 182, 6, 252, 28), "HELP", 0, plotwin_cb, HELP);

    pw.interpolation.wo = add_field(fm, 0, "Interpolation:", 2, INTERP_UP, INTERP_DOWN, INTERP_TYPED);
    pw.interval.wo = add_field(fm, 1, "Time interval (sec):", 6, 10, 11, 12);
    pw.centre.wo = add_field(fm, 2, "Center time (sec):", 6, 4, 5, 6);
    pw.height.wo = add_field(fm, 3, "Profile height:", 2, HEIGHT_UP, HEIGHT_DOWN, HEIGHT_TYPED);
    pw.truncation.wo = add_field(fm, 4, "Profile truncation:", 2, TRUNC_UP, TRUNC_DOWN, TRUNC_TYPED);
    pw.scaling =
        wi_mk_listsel(wi_form_parent(fm, 8, 164, 252, 188), "Scaling:", 0, 0.451, {"amplitude", "power"});
    wi_listsel_selchng_cb(pw.scaling, plotwin_cb, SCALING);

    const bool downsize = pw.client->can_downsize();
    wi_obj* zooms = wi_mk_butary(wi_form_parent(fm, 8, 200, 252, 226), 1, 2);
    pw.zoom = wi_butary_button(zooms, "Zoom", 0, plotwin_cb, 7);
    pw.unzoom = wi_butary_button(zooms, "Unzoom", 0, plotwin_cb, 8);
    wi_obj* actions = pw.actions = wi_mk_butary(wi_form_parent(fm, 8, 232, 252, 258), 1, downsize ? 2 : 1);
    wi_butary_button(actions, "Hardcopy", 0, plotwin_cb, HARDCOPY);
    if (downsize) wi_butary_button(actions, "Downsize", 0, plotwin_cb, DOWNSIZE);
    wi_zuvapp_quit(fm, 1, "DISMISS", plotwin_cb, DISMISS);
    wi_size(fm, 260, 270);
    wi_position(fm, 690, 410);
    norva_reg(fm, "Profile Plotting");
    the_port().keep_above(getparenthandle(fm));
    set_deltas(pw.client->kind);
}

void plotwin_refresh_controls(const plot_readiness& ready) {
    if (!pw.window) return;
    wi_enable(pw.window, ready.heard);
    for (wi_obj* wo : {pw.interval.wo, pw.centre.wo, pw.actions}) wi_enable(wo, ready.picture);
    wi_enable(pw.zoom, ready.picture && ready.zoom);
    wi_enable(pw.unzoom, ready.picture && ready.unzoom);
}

void plotwin_reset() {
    pw = {};
}

} // namespace norva
