// The window with the end points of a cut.
#include "ximag_int.h"

#include "state/run.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace norva {

static struct {
    wi_obj* window = nullptr;
    wi_obj *c1 = nullptr, *r1 = nullptr, *c2 = nullptr, *r2 = nullptr, *toggle = nullptr;
    int on = 0;
} tp;

int ximag_twopt_status() {
    return tp.on;
}

void twopt_reset() {
    tp = {};
}

void twopt_put() {
    if (!tp.window) return;
    wi_numfld_putval(tp.c1, xi.pip.c1);
    wi_numfld_putval(tp.r1, xi.pip.r1);
    wi_numfld_putval(tp.c2, xi.pip.c2);
    wi_numfld_putval(tp.r2, xi.pip.r2);
}

void twopt_get() {
    proimag_parms& pip = xi.pip;
    const auto read = [](const wi_obj* field, double low, double high) {
        const double v = wi_numfld_getval(field);
        return static_cast<float>(std::clamp(std::isfinite(v) ? v : 0, low, high));
    };
    pip.c1 = read(tp.c1, pip.x1, image_x2());
    pip.c2 = read(tp.c2, pip.x1, image_x2());
    pip.r1 = read(tp.r1, pip.y1, image_y2());
    pip.r2 = read(tp.r2, pip.y1, image_y2());
    const double dc = pip.c2 - pip.c1, dr = pip.r2 - pip.r1;
    pip.xpv = 0.5f * (pip.c1 + pip.c2);
    pip.ypv = 0.5f * (pip.r1 + pip.r2);
    pip.ang = dc == 0 ? 90 : static_cast<float>(std::atan2(dr, dc) * 180 / std::numbers::pi);
    pip.wct = static_cast<float>(std::max(2.0, std::hypot(dc, dr)));
}

static void twopt_cb(wi_obj*, int) {
    if (!ximag_heard() || !imgwinon) return;
    ximag_bttn(nullptr, PI_CUT);
    twopt_get();
    xi.last_mode = PI_CUT;
    xi.nclick = 2;
    xi_show_cut(0, 0);
    ximag_putvals(2);
}

void twopt_close() {
    if (tp.on) wi_off(tp.window);
    tp.on = 0;
    if (tp.toggle) wi_button_setstate(tp.toggle, 0);
}

static void close_cb(wi_obj*, int) {
    twopt_close();
}

static void build() {
    wi_set_window_name("NORVA: image: two pt");
    wi_obj* fm = tp.window = wi_mk_form(nullptr, 100, 100);
    wi_hlp_setprog(fm, "norva:image:end points");
    const auto field = [fm](double x, double y, const char* label) {
        wi_obj* wo = wi_mk_numfld(wi_form_parent(fm, x, y, x + 46, y + 42), label, 0.45, 1);
        wi_numfld_set_cb(wo, twopt_cb, 0);
        return wo;
    };
    tp.c1 = field(2, 6, "C/r 1:");
    tp.r1 = field(52, 6, "Range 1:");
    tp.c2 = field(2, 52, "C/r 2:");
    tp.r2 = field(52, 52, "Range 2:");
    wi_zuvapp_quit(fm, 1, "DISMISS", close_cb, 0);
    wi_size(fm, 350, 100);
    wi_position(fm, 750, 0);
    norva_reg(fm, "Image Two Pt");
    the_port().keep_above(getparenthandle(fm));
}

// The toggle "End Points".
void twopt_init(wi_obj* obj, int) {
    tp.toggle = obj;
    if (tp.on || !ximag_heard()) {
        const bool stays = tp.on && !ximag_heard();
        if (!stays) twopt_close();
        wi_button_setstate(obj, stays);
        return;
    }
    if (!tp.window) build();
    ximag_bttn(nullptr, PI_CUT);
    tp.on = 1;
    ximag_putvals(1);
    wi_on(tp.window);
    wi_button_setstate(obj, 1);
}

} // namespace norva
