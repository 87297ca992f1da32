// The pointer in the range profile picture: the control box, centring, and the line drawn along a track.
#include "range_int.h"

#include "draw/overlays.h"
#include "profile_parts.h"
#include "state/run.h"
#include "state/user.h"

#include <cmath>
#include <numbers>

namespace norva {

static void erase_line() {
    if (!rp.line) return;
    vg_unrender_object(*rp.disp, rp.line.get());
    vg_del_object(rp.line);
}

void remove_line() {
    erase_line();
    rp.nclick = 0;
}

static void show_line() {
    rp.line = draw_vg_line(rp.picture.rp_df, rp.xpv, rp.ypv, rp.ang);
    vg_render_object(*rp.disp, rp.line.get());
}

void rebuild_line() {
    if (rp.line) rp.line = draw_vg_line(rp.picture.rp_df, rp.xpv, rp.ypv, rp.ang);
}

// Angle of a direction as that of a line: above -90 up to 90 degrees.
static double line_angle(double dx, double dy) {
    const double ang = std::atan2(dy, dx) * 180 / std::numbers::pi;
    return ang > 90 ? ang - 180 : ang <= -90 ? ang + 180 : ang;
}

// The second point, or the pointer on its way there.
static void line_to(double x, double y) {
    if (rp.nclick == 2) rp.dft = (x - rp.xpv) * user.dt / (y - rp.ypv);
    rp.ang = line_angle(x - rp.xpv, y - rp.ypv);
    // Gates per record times seconds, taken as it stands: only the slope is removed.
    rp.dft_off = rp.xpv - rp.dft * rp.ypv;
    erase_line();
    show_line();
}

static void press_in_line_mode(int ibut, double x, double y) {
    if (ibut == MIDDLE_BUTTON) return;
    if (ibut == RIGHT_BUTTON) {
        const bool complete = rp.nclick == 2;
        remove_line();
        if (complete) xrp_mocomp(2, rp.dft);
        return;
    }
    if (rp.nclick > 1) rp.nclick = 0;
    // A line along one instant has no drift; another second point is waited for.
    if (rp.nclick == 1 && y == rp.ypv) return;
    if (rp.nclick == 0) {
        erase_line();
        rp.xpv = x;
        rp.ypv = y;
    }
    rp.nclick++;
    if (rp.nclick == 2) line_to(x, y);
}

void xrp_mouse(wi_obj*, int tag, int xpx, int ypx, int ibut) {
    if (msgwinon || pkswinon || !rpwinon || !rp.disp || !rp.picture.frame) return;
    if (tag == MOUSE_MOTION && (rp.m_mode != MODE_LINE || rp.nclick != 1)) return;
    float xpos, ypos;
    vg_xy_pos(*rp.disp, xpx, ypx, xpos, ypos);
    if (tag == MOUSE_PRESS && in_cbox(*rp.disp, xpos, ypos)) {
        control_journal(ibut);
        return;
    }
    const _vgdataframe& df = rp.picture.rp_df;
    if (!vg_inrect(df.pltbox, xpos, ypos)) return;
    const double x = vg_x_val(df, xpos), y = vg_y_val(df, ypos);
    if (tag == MOUSE_MOTION)
        line_to(x, y);
    else if (rp.m_mode == MODE_CENTER && ibut == LEFT_BUTTON)
        xrp_mocomp(0, x);
    else if (rp.m_mode == MODE_LINE)
        press_in_line_mode(ibut, x, y);
}

} // namespace norva
