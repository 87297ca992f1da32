// The numeric fields of the image window's panel.
#include "ximag_int.h"

#include "state/defaults.h"
#include "state/run.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace norva {

constexpr float LEAST_CUT = 2, LEAST_SPACING = 0.05f; // gates
constexpr int ANGLE_STOP = 18;                        // degrees; steps of the angle end on its multiples

static float finite_or(double v, float otherwise) {
    return std::isfinite(v) && std::fabs(v) < 1e30 ? static_cast<float>(v) : otherwise;
}

static float held(double v, double low, double high, float otherwise) {
    return static_cast<float>(std::clamp<double>(finite_or(v, otherwise), low, std::max(low, high)));
}

static float into_turn(float ang) {
    if (!std::isfinite(ang)) return 0;
    ang = std::fmod(ang, 360.0f);
    return ang > 180 ? ang - 360 : ang <= -180 ? ang + 360 : ang;
}

// --- Reading

static void get_edit() {
    proimag_parms& pip = xi.pip;
    const panel_fields& f = ximag_fields();
    pip.xc1 = held(wi_numfld_getval(f.xc1), pip.x1, image_x2(), pip.xc1);
    pip.xc2 = held(wi_numfld_getval(f.xc2), pip.x1, image_x2(), pip.xc2);
    pip.yc1 = held(wi_numfld_getval(f.yc1), pip.y1, image_y2(), pip.yc1);
    pip.yc2 = held(wi_numfld_getval(f.yc2), pip.y1, image_y2(), pip.yc2);
}

static void get_interpolate() {
    proimag_parms& pip = xi.pip;
    const auto factor = [](wi_obj* field, float most) {
        return static_cast<int>(held(wi_incdecfld_getval(field), 1, most, 1));
    };
    pip.ifx = factor(ximag_fields().ifx, def.pi_ifx_max);
    pip.ify = factor(ximag_fields().ify, def.pi_ify_max);
    def.pi_ifx = static_cast<float>(pip.ifx);
    def.pi_ify = static_cast<float>(pip.ify);
}

static void get_cut() {
    proimag_parms& pip = xi.pip;
    const panel_fields& f = ximag_fields();
    if (!f.wct) return;
    pip.wct = held(wi_incdecfld_getval(f.wct), LEAST_CUT, 1e6, pip.wct);
    pip.dct = held(wi_numfld_getval(f.dct), LEAST_SPACING, 1e6, pip.dct);
    pip.xpv = held(wi_incdecfld_getval(f.xpv), pip.x1, image_x2(), pip.xpv);
    pip.ypv = held(wi_incdecfld_getval(f.ypv), pip.y1, image_y2(), pip.ypv);
    pip.ang = into_turn(finite_or(wi_incdecfld_getval(f.ang), pip.ang));
    if (ximag_twopt_status()) twopt_get();
}

void ximag_getvals() {
    switch (xi.pip.mode) {
    case PI_PEAK_SCALING: read_peak_scaling(); break;
    case PI_EDIT: get_edit(); break;
    case PI_INTERPOLATE: get_interpolate(); break;
    case PI_CUT: get_cut(); break;
    default: break;
    }
}

// --- Writing

static void put_cut() {
    const proimag_parms& pip = xi.pip;
    const panel_fields& f = ximag_fields();
    if (!f.wct) return;
    wi_incdecfld_putval(f.wct, pip.wct);
    wi_numfld_putval(f.dct, pip.dct);
    wi_incdecfld_putval(f.xpv, pip.xpv);
    wi_incdecfld_putval(f.ypv, pip.ypv);
    wi_incdecfld_putval(f.ang, pip.ang);
}

static void put_edit_and_factors() {
    const proimag_parms& pip = xi.pip;
    const panel_fields& f = ximag_fields();
    wi_numfld_putval(f.xc1, pip.xc1);
    wi_numfld_putval(f.xc2, pip.xc2);
    wi_numfld_putval(f.yc1, pip.yc1);
    wi_numfld_putval(f.yc2, pip.yc2);
    wi_incdecfld_putval(f.ifx, pip.ifx);
    wi_incdecfld_putval(f.ify, pip.ify);
}

// End points about the pivot.
static void compute_end_points() {
    proimag_parms& pip = xi.pip;
    const double a = pip.ang * std::numbers::pi / 180, half = 0.5 * pip.wct;
    pip.c1 = static_cast<float>(pip.xpv - std::cos(a) * half);
    pip.c2 = static_cast<float>(pip.xpv + std::cos(a) * half);
    pip.r1 = static_cast<float>(pip.ypv - std::sin(a) * half);
    pip.r2 = static_cast<float>(pip.ypv + std::sin(a) * half);
}

// Fields from the block. Level 0: all; 1: not those of edit and interpolation; both compute the end points of
// the cut. 2: the cut alone, end points as they are. 3: the same, the second end point opposite the first.
void ximag_putvals(int level) {
    proimag_parms& pip = xi.pip;
    if (!ximag_window()) return;
    put_cut();
    if (level == 0) {
        put_edit_and_factors();
        put_peak_scaling();
    }
    if (level < 2) compute_end_points();
    if (level == 3) {
        pip.c2 = 2 * pip.xpv - pip.c1;
        pip.r2 = 2 * pip.ypv - pip.r1;
    }
    twopt_put();
}

void whole_image_box() {
    proimag_parms& pip = xi.pip;
    pip.xc1 = pip.x1;
    pip.yc1 = pip.y1;
    pip.xc2 = static_cast<float>(image_x2());
    pip.yc2 = static_cast<float>(image_y2());
}

void ximag_reset_flds() {
    proimag_parms& pip = xi.pip;
    whole_image_box();
    pip.wct = def.pi_wct;
    pip.dct = def.pi_dct;
    pip.xpv = pip.ypv = pip.ang = 0;
    ximag_putvals(0);
}

void ximag_enable_flds(int flag) {
    const panel_fields& f = ximag_fields();
    for (wi_obj* field : {f.wct, f.xpv, f.ypv, f.ang, f.ifx, f.ify})
        if (field) wi_incdecfld_editable(field, flag);
    for (wi_obj* field : {f.dct, f.xc1, f.xc2, f.yc1, f.yc2})
        if (field) wi_numfld_editable(field, flag);
}

// --- Handler

static void step_factor(wi_obj* field, bool up) {
    if (!field || peak_scaling_up()) return;
    const double v = wi_incdecfld_getval(field);
    if (up && v < 8) wi_incdecfld_putval(field, 2 * std::max(v, 1.0));
    if (!up && v >= 2) wi_incdecfld_putval(field, std::floor(v / 2));
}

// The next multiple of f in the direction dir.
static double near_factor(int dir, int f, double num) {
    return dir > 0 ? (std::floor(num / f) + 1) * f : (std::ceil(num / f) - 1) * f;
}

static bool isfact(int f, double num) {
    return std::fmod(num, f) == 0;
}

static void step_angle(int dir) {
    wi_obj* field = ximag_fields().ang;
    if (!field) return;
    const double old = into_turn(finite_or(wi_incdecfld_getval(field), 0));
    double v = into_turn(static_cast<float>(old + dir * def.pi_ang_inc));
    if (!isfact(ANGLE_STOP, v)) v = into_turn(static_cast<float>(near_factor(dir, ANGLE_STOP, old)));
    wi_incdecfld_putval(field, v);
}

static void step_field(wi_obj* field, double by) {
    if (field) wi_incdecfld_putval(field, wi_incdecfld_getval(field) + by);
}

// A field of the cut has changed.
static void cut_changed() {
    if (!cut_window_stands()) return;
    ximag_bttn(nullptr, PI_CUT);
    ximag_getvals();
    xi.last_mode = PI_CUT;
    xi.nclick = 2;
    xi_show_cut(0, 0);
    ximag_putvals(1);
}

// A corner of the edit has changed: the box stands as if drawn.
static void edit_changed() {
    proimag_parms& pip = xi.pip;
    ximag_bttn(nullptr, PI_EDIT);
    ximag_getvals();
    xi.last_mode = PI_EDIT;
    xi.nclick = 2;
    xi.bx0 = pip.xc1;
    xi.bx1 = pip.xc2;
    xi.by0 = pip.yc1;
    xi.by1 = pip.yc2;
    xi_show_box();
    ximag_putvals(0);
}

void ximag_fld_cb(wi_obj* obj, int tag) {
    if (!ximag_heard() || !imgwinon) return;
    const panel_fields& f = ximag_fields();
    switch (tag) {
    case 3: step_dot_scaling(1); return;
    case 4: step_dot_scaling(-1); return;
    case 10: step_peaks(1); return;
    case 11: step_peaks(-1); return;
    case 5: step_factor(obj, true); return;
    case 6: step_factor(obj, false); return;
    case 7: step_angle(1); break;
    case 8: step_angle(-1); break;
    case 9: break;
    case 12: edit_changed(); return;
    case 13: step_field(f.wct, 1); break;
    case 14: step_field(f.wct, -1); break;
    case XI_XPV_UP: step_field(f.xpv, 1); break;
    case XI_XPV_DOWN: step_field(f.xpv, -1); break;
    case XI_YPV_UP: step_field(f.ypv, 1); break;
    case XI_YPV_DOWN: step_field(f.ypv, -1); break;
    default: return;
    }
    cut_changed();
}

int ximag_new_ang(proimag_parms* parms) {
    const float v = static_cast<float>(parms->nx) * parms->dx != 0 ? 45 : 90;
    float& ang = parms->ang;
    ang = into_turn(ang);
    if (ang >= 180 - v) {
        ang -= 180;
        return 1;
    }
    if (ang <= -v) {
        ang += 180;
        return 1;
    }
    return 0;
}

} // namespace norva
