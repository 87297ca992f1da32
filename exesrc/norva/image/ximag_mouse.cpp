// The pointer in the image: the control box, boxes, the crosshair, and the line of a cut.
#include "ximag_int.h"

#include "draw/image_overlays.h"
#include "draw/image_picture.h"
#include "draw/overlays.h"
#include "journal/journal.h"
#include "state/image_cut.h"
#include "state/run.h"
#include "state/user.h"

#include <algorithm>
#include <cmath>

namespace norva {

// --- Control box

// The way out at the start of an image: unless the journal holds it as it is, it is stored with all its
// steps; then the journal goes to the step before.
static void leave_backwards() {
    proimag_parms& pip = xi.pip;
    const bool held = jary.allocated();
    const int before = user.count - (held ? 1 : 0);
    xi.playback = 0;
    if (held && !xi.changed) {
        ximag_leave();
    } else {
        pip.mode = PI_GO;
        pip.nbu = 100;
        pi_apply(&pip);
        ximag_bttn(nullptr, PI_EXPORT);
    }
    user.count = std::max(before, 0);
    mng_jrnl(nullptr, 0);
}

static bool request_step(int ibut) {
    proimag_parms& pip = xi.pip;
    pip.mode = ibut == RIGHT_BUTTON ? PI_GO : PI_STEP;
    pip.nbu = ibut == LEFT_BUTTON ? 1 : ibut == MIDDLE_BUTTON ? -1 : 0;
    if (pi_apply(&pip)) return true;
    ximag_reset_mbut();
    return false;
}

static void show_marks_of_step() {
    const proimag_parms& pip = xi.pip;
    if (xi.image_mode == PI_PEAK_PARAMETERS) {
        xi_show_crosshair(pip.xc, pip.yc, pip.apk);
    } else if (xi.image_mode == PI_CUT && cut_window_stands()) {
        xi_show_cut(0, 0);
    } else if (xi.image_mode == PI_CENTER) {
        xi_show_crosshair(pip.xc, pip.yc, image_amplitude(pip.xc, pip.yc) * img.ascl);
    }
}

void ximag_step(int ibut) {
    proimag_parms& pip = xi.pip;
    if (!imgwinon) return;
    if (ibut == MIDDLE_BUTTON && pip.count == 0) {
        leave_backwards();
        return;
    }
    if (!request_step(ibut)) return;
    xi.nclick = xi.freemv = 0;
    xi_drop_crosshair();
    xi_drop_cut();
    xi_drop_box();
    if (pip.mode == PI_EXPORT) {
        xi.playback = 1;
        ximag_bttn(nullptr, PI_EXPORT);
        return;
    }
    if (pip.count == 0)
        ximag_reset_flds();
    else
        ximag_putvals(0);
    ximag_reset_mbut();
    show_marks_of_step();
    ximag_render();
}

// --- Boxes

// The samples that a box takes in, as their places: the first at or below its low side, the last at or above
// its high side, both inside the image.
static void snap_outward(double& low, double& high, double first, double step, int n) {
    const double slack = 1e-4; // of a sample: a place on a sample stays there in single precision
    const double i = std::floor((low - first) / step + slack), j = std::ceil((high - first) / step - slack);
    low = first + std::clamp(i, 0.0, n - 1.0) * step;
    high = first + std::clamp(j, 0.0, n - 1.0) * step;
}

static void complete_box(double x, double y) {
    const proimag_parms& pip = xi.pip;
    xi.bx1 = x;
    xi.by1 = y;
    if (xi.bx0 > xi.bx1) std::swap(xi.bx0, xi.bx1);
    if (xi.by0 > xi.by1) std::swap(xi.by0, xi.by1);
    snap_outward(xi.bx0, xi.bx1, pip.x1, pip.dx, pip.nx);
    snap_outward(xi.by0, xi.by1, pip.y1, pip.dy, pip.ny);
    xi_show_box();
    if (pip.mode != PI_EDIT) return;
    xi.pip.xc1 = static_cast<float>(xi.bx0);
    xi.pip.xc2 = static_cast<float>(xi.bx1);
    xi.pip.yc1 = static_cast<float>(xi.by0);
    xi.pip.yc2 = static_cast<float>(xi.by1);
    ximag_putvals(0);
}

static void zoom_to_box() {
    if (!xi.zmbox || !(xi.bx1 > xi.bx0) || !(xi.by1 > xi.by0)) return;
    xi_drop_box();
    xi.nclick = 0;
    draw_vg_img(*xi.disp, IMG_ZOOM, xi.pip.imgtype, xi.bx0, xi.by0, xi.bx1, xi.by1);
    ximag_render();
}

static void edit_box() {
    if (!pi_apply(&xi.pip)) {
        ximag_reset_mbut(); // the box stays armed
        return;
    }
    xi_drop_box();
    xi.nclick = 0;
    whole_image_box();
    ximag_putvals(0);
    ximag_reset_mbut();
    ximag_render();
}

static void press_for_box(int ibut, double x, double y) {
    if (ibut == MIDDLE_BUTTON) {
        xi_drop_box();
        xi.nclick = 0;
        return;
    }
    if (ibut == RIGHT_BUTTON) {
        if (xi.nclick == 1) complete_box(x, y);
        if (xi.nclick == 0) ximag_getvals();
        xi.nclick = 2;
    }
    if (xi.nclick == 0) {
        xi.bx0 = xi.bx1 = x;
        xi.by0 = xi.by1 = y;
        xi_show_box();
        xi.nclick = 1;
    } else if (xi.nclick == 1) {
        complete_box(x, y);
        xi.nclick = 2;
    } else if (xi.pip.mode == PI_EDIT) {
        edit_box();
    } else {
        zoom_to_box();
        if (!xi.zmbox) xi.nclick = 0;
    }
}

// --- Crosshair

static void follow(double x, double y) {
    xi_show_crosshair(x, y, image_amplitude(x, y) * img.ascl);
}

static void measure_peak() {
    proimag_parms& pip = xi.pip;
    if (!pi_apply(&pip)) {
        ximag_reset_mbut();
        return;
    }
    xi.freemv = 0;
    ximag_putvals(0);
    xi_show_crosshair(pip.xc, pip.yc, pip.apk);
    ximag_render();
}

static void centre_image() {
    proimag_parms& pip = xi.pip;
    const int kflop = pip.kflop;
    pip.kflop = xi.center_mode;
    const bool done = pi_apply(&pip);
    pip.kflop = kflop;
    if (!done) {
        ximag_reset_mbut();
        return;
    }
    journal_hooks.show_track_button(false);
    xi.last_mode = xi.nclick = 0;
    ximag_bttn(nullptr, PI_EXPORT); // the data are not those of this image any more
    pip.count = 0;
}

static void press_for_crosshair(int ibut, double x, double y) {
    proimag_parms& pip = xi.pip;
    const bool centring = pip.mode == PI_CENTER;
    if (ibut == LEFT_BUTTON) {
        xi.freemv = 1;
        follow(x, y);
    } else if (ibut == MIDDLE_BUTTON) {
        if (!centring) return;
        xi.freemv = xi.center_mode = 0;
        follow(x, y);
    } else {
        // Only a centering can be held at a point; a measurement is made where the pointer is.
        if (xi.freemv || !centring || !xi.xhr) {
            pip.xc = static_cast<float>(x);
            pip.yc = static_cast<float>(y);
            if (centring) xi.center_mode = 1;
        } else {
            pip.xc = static_cast<float>(xi.xhr_x);
            pip.yc = static_cast<float>(xi.xhr_y);
        }
        centring ? centre_image() : measure_peak();
    }
}

// --- Cut

static void begin_cut(double x, double y) {
    proimag_parms& pip = xi.pip;
    xi_drop_cut();
    pip.xpv = static_cast<float>(x);
    pip.ypv = static_cast<float>(y);
    pip.wct = pip.ang = 0;
    xi.nclick = 1;
    ximag_putvals(1);
}

static void press_for_cut(int ibut, double x, double y) {
    proimag_parms& pip = xi.pip;
    if (ibut == MIDDLE_BUTTON) {
        xi_drop_cut();
        xi.nclick = 0;
    } else if (ibut == RIGHT_BUTTON) {
        if (xi.nclick == 1) return;
        ximag_getvals();
        xi_show_cut(x, y);
        if (!pi_apply(&pip)) ximag_reset_mbut();
    } else if (xi.nclick == 1) {
        xi.nclick = 2;
        xi_show_cut(x, y); // gives length and angle
        xi_show_cut(x, y); // shows the cut they make, on both sides of the pivot
        ximag_putvals(1);
    } else {
        begin_cut(x, y);
    }
}

// --- Dispatch

static bool is_box_mode(int mode) {
    return mode == PI_EDIT || mode == XI_ZOOM;
}

static bool is_crosshair_mode(int mode) {
    return mode == PI_PEAK_PARAMETERS || mode == PI_CENTER;
}

static bool is_cut_mode(int mode) {
    return mode == PI_CUT && cut_window_stands();
}

static void moved(int mode, double x, double y) {
    if (is_crosshair_mode(mode)) {
        follow(x, y);
    } else if (is_box_mode(mode)) {
        xi.bx1 = x;
        xi.by1 = y;
        xi_show_box();
    } else {
        xi_show_cut(x, y);
    }
}

static bool motion_matters(int mode) {
    if (is_crosshair_mode(mode)) return xi.freemv;
    return (is_box_mode(mode) || is_cut_mode(mode)) && xi.last_mode == mode && xi.nclick == 1;
}

void ximag_mouse(wi_obj*, int tag, int xpx, int ypx, int ibut) {
    if (!ximag_heard() || !imgwinon || !xi.disp || !xi_picture.frame) return;
    const int mode = xi.pip.mode;
    if (tag == MOUSE_MOTION && !motion_matters(mode)) return;
    float px, py;
    vg_xy_pos(*xi.disp, xpx, ypx, px, py);
    if (tag == MOUSE_PRESS && in_cbox(*xi.disp, px, py)) {
        ximag_step(ibut);
        return;
    }
    const _vgdataframe& df = xi_picture.xy_df;
    if (!vg_inrect(df.pltbox, px, py)) {
        if (!is_box_mode(mode)) return;
        px = std::clamp(px, df.pltbox.x0, df.pltbox.x1);
        py = std::clamp(py, df.pltbox.y0, df.pltbox.y1);
    }
    const double x = vg_x_val(df, px), y = vg_y_val(df, py);
    if (tag == MOUSE_MOTION) {
        moved(mode, x, y);
        return;
    }
    if (xi.last_mode != mode) xi.nclick = 0;
    xi.last_mode = mode;
    if (is_box_mode(mode))
        press_for_box(ibut, x, y);
    else if (is_crosshair_mode(mode))
        press_for_crosshair(ibut, x, y);
    else if (is_cut_mode(mode))
        press_for_cut(ibut, x, y);
}

} // namespace norva
