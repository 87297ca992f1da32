// The picture in the image window, what is laid over it, and the picture on paper.
#include "ximag_int.h"

#include "draw/image_overlays.h"
#include "draw/image_picture.h"
#include "draw/overlays.h"
#include "journal/journal.h"
#include "state/image_cut.h"
#include "state/user.h"
#include "vgph/vgsym.h"
#include "vgph/winplot.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace norva {

double image_x2() {
    return (xi.pip.nx - 1) * static_cast<double>(xi.pip.dx) + xi.pip.x1;
}

double image_y2() {
    return (xi.pip.ny - 1) * static_cast<double>(xi.pip.dy) + xi.pip.y1;
}

// --- Overlays. Each is on the display exactly once while its object exists.

static vgobject_ptr make_readout() {
    return draw_vg_syms(*xi.disp, xi_picture.xy_df, xi.xhr_x, xi.xhr_y, xi.xhr_amplitude,
                        img.ascl > 0 ? img.ascl : 1);
}

static vgobject_ptr make_cut() {
    proimag_parms& pip = xi.pip;
    if (pip.wct != 0) return draw_vg_cut(xi_picture.xy_df, pip.xpv, pip.ypv, pip.wct, pip.ang, 0, 0);
    float wct = 0;
    vgobject_ptr line = draw_vg_cut(xi_picture.xy_df, pip.xpv, pip.ypv, wct, pip.ang, xi.cut_x, xi.cut_y);
    // While the line is drawn its length stays that of the pointer.
    if (xi.nclick != 1) pip.wct = wct;
    return line;
}

void xi_show_crosshair(double x, double y, double amplitude) {
    xi.xhr_x = x;
    xi.xhr_y = y;
    xi.xhr_amplitude = amplitude;
    put_overlay(*xi.disp, xi.xhr, draw_vg_xhr(xi_picture.xy_df, x, y));
    put_overlay(*xi.disp, xi.syms, make_readout());
}

void xi_show_box() {
    put_overlay(*xi.disp, xi.zmbox, draw_vg_zmbox(xi_picture.xy_df, xi.bx0, xi.by0, xi.bx1, xi.by1));
}

void xi_show_cut(double x, double y) {
    xi.cut_x = x;
    xi.cut_y = y;
    put_overlay(*xi.disp, xi.cut, make_cut());
}

static void drop(vgobject_ptr& overlay) {
    if (xi.disp) put_overlay(*xi.disp, overlay, nullptr);
    vg_del_object(overlay);
}

void xi_drop_crosshair() {
    drop(xi.xhr);
    drop(xi.syms);
}

void xi_drop_readout() {
    drop(xi.syms);
}

void xi_drop_box() {
    drop(xi.zmbox);
}

void xi_drop_cut() {
    drop(xi.cut);
}

// --- The picture

// The picture's frame has changed: what lies over it is made anew, without being drawn.
static void rebuild_overlays() {
    if (xi.xhr) xi.xhr = draw_vg_xhr(xi_picture.xy_df, xi.xhr_x, xi.xhr_y);
    if (xi.syms) xi.syms = make_readout();
    if (xi.zmbox) xi.zmbox = draw_vg_zmbox(xi_picture.xy_df, xi.bx0, xi.by0, xi.bx1, xi.by1);
    if (xi.cut) xi.cut = make_cut();
}

// The journal's step this image is, or will be once it is stored, and the image's own step.
static int control_box_number() {
    return 100 * (user.count + (jary ? 0 : 1)) + xi.pip.count;
}

void ximag_render() {
    if (!xi.disp || !xi_picture.frame) return;
    vg_clear(*xi.disp);
    if (xi.pip.imgtype == IMG_COLOR) draw_vg_img(*xi.disp, IMG_REDRAW, IMG_COLOR);
    vg_render_frame(*xi.disp, xi_picture.frame.get());
    draw_vg_mdesc(*xi.disp, xi.mdesc, xi.named_mode, 1);
    draw_vg_cbox(*xi.disp, xi.cbox, control_box_number());
    vg_render_frame(*xi.disp, xi.cbox.get());
    // Last, since they show by exclusive-or with what is there.
    rebuild_overlays();
    for (const vgobject_ptr* overlay : {&xi.xhr, &xi.syms, &xi.zmbox, &xi.cut})
        vg_render_object(*xi.disp, overlay->get());
}

void show_image_again() {
    if (!xi.disp || !xi_picture.frame) return;
    if (xi.pip.imgtype != IMG_COLOR) draw_vg_img(*xi.disp, IMG_REDRAW, xi.pip.imgtype);
    ximag_render();
}

void ximag_resize(wi_obj*, int) {
    show_image_again();
}

void xi_drop_picture() {
    vg_del_object(xi.xhr);
    vg_del_object(xi.syms);
    vg_del_object(xi.zmbox);
    vg_del_object(xi.cut);
    vg_del_object(xi.mdesc);
    vg_del_frame(xi.cbox);
    drop_vg_img();
    if (xi.disp) vg_clear(*xi.disp); // nothing of it is seen when the window comes up again
}

// --- Paper

constexpr float TEXT = 0.1f;   // height of the parameter lines, inches
constexpr float OFFSET = 0.5f; // of the picture from the paper's edges
constexpr float SHEET_WIDTH = 11, SHEET_HEIGHT = 8.5f;

// The four lines beside the picture, from the top of its frame down, and where the longest of them ends.
static vgobject_ptr parameter_lines(float x, float& right) {
    const _vgdataframe& df = xi_picture.xy_df;
    float y = df.y0 + df.ylen - TEXT;
    vgobject_ptr lines = vg_new_object();
    const std::string texts[] = {
        strprintf("Start Freq (MHz): %f", user.f0), strprintf("Bandwidth (MHz): %f", user.bw),
        strprintf("Start Time (sec): %f", user.t0), strprintf("Dwell (sec): %f", user.dwell)};
    for (const std::string& text : texts) {
        vg_obj_sym(*lines, x, y, TEXT, 0, text);
        right = std::max(right, x + vg_symlen(TEXT, text));
        y -= 1.5f * TEXT;
    }
    return lines;
}

// Where the picture ends: the frame, or the scale bar beside it.
static float picture_right() {
    float right = xi_picture.xy_df.pltbox.x1;
    for (const vgobject_ptr& object : xi_picture.frame->objptr) {
        float x0, y0, x1, y1;
        vg_obj_extent(*object, x0, y0, x1, y1);
        if (object->extended == 0) right = std::max(right, x1);
    }
    return right;
}

std::string ximag_hc() {
    if (!xi.disp || !xi_picture.frame) return "";
    float right = 0;
    const vgobject_ptr lines = parameter_lines(picture_right() + 2 * TEXT, right);
    // A picture larger than the sheet is made to fit.
    const float header = 3 * TEXT;
    const float scale = std::min(
        {1.0f, (SHEET_WIDTH - 2 * OFFSET) / right, (SHEET_HEIGHT - 2 * OFFSET - header) / xi.disp->ysize});
    vghardcopy_ptr hc = vg_hc_init("image", 0, scale, scale, OFFSET, OFFSET, 1);
    if (xi.pip.imgtype == IMG_COLOR) {
        xi_picture.chc = hc.get();
        draw_vg_img(*xi.disp, IMG_REDRAW, IMG_COLOR);
        xi_picture.chc = nullptr;
    }
    vg_hc_frame(*hc, xi_picture.frame.get());
    vg_hc_frame(*hc, xi.cbox.get());
    for (const _vgobject* object :
         {xi.syms.get(), xi.cut.get(), xi.xhr.get(), xi.zmbox.get(), xi.mdesc.get(), lines.get()})
        vg_hc_object(*hc, object);
    hc_hdr(*hc, 0, xi.disp->ysize + TEXT, user.jfile);
    const bool opened = hc->context != 0;
    vg_hc_done(*hc);
    std::error_code ignored;
    return opened && std::filesystem::exists(hc->tfname, ignored) ? hc->tfname : "";
}

bool strongest_image_gate(image_gate& gate) {
    const proimag_parms& pip = xi.pip;
    if (!xi_picture.frame || !(img.ascl > 0)) return false;
    gate.amplitude = -1;
    for (int j = 0; j < pip.ny; j++) {
        for (int i = 0; i < pip.nx; i++) {
            const float x = pip.x1 + static_cast<float>(i) * pip.dx,
                        y = pip.y1 + static_cast<float>(j) * pip.dy;
            const float a = image_amplitude(x, y) * img.ascl;
            if (a > gate.amplitude) gate = {x, y, a};
        }
    }
    return gate.amplitude > 0;
}

} // namespace norva
