// The image window and the controls of its panel.
#include "ximag_int.h"

#include "draw/image_picture.h"
#include "state/run.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <array>

namespace norva {

static struct {
    wi_obj *window = nullptr, *dismiss = nullptr, *help = nullptr, *hint = nullptr, *panel = nullptr,
           *area = nullptr;
    wi_obj *cut = nullptr, *edit = nullptr, *peak = nullptr, *zoom = nullptr, *centre = nullptr;
    wi_obj *menus = nullptr, *axis = nullptr;
    std::array<int, 3> style{};
    panel_fields fields;
} win;

wi_obj* ximag_window() {
    return win.window;
}

panel_fields& ximag_fields() {
    return win.fields;
}

void panel_reset() {
    win = {};
}

// --- Building: the panel is a stack of frames, measured in rows of one field each.

constexpr double FRAME_MARGIN = 0.25, FRAME_GAP = 0.2; // rows

// Frame of so many rows, y moved below it; the form inside is 100 units wide and has a unit for each row.
static wi_obj* add_frame(wi_obj* stack, double& y, int rows) {
    const double height = rows + 2 * FRAME_MARGIN;
    wi_obj* inside = wi_mk_form(wi_mk_frame(wi_form_parent(stack, 1, y, 99, y + height)), 100, height);
    y += height + FRAME_GAP;
    return inside;
}

static wi_obj* cell(wi_obj* frame, double x0, int row, double x1) {
    const double y = FRAME_MARGIN + row;
    return wi_form_parent(frame, x0, y + 0.04, x1, y + 0.96);
}

constexpr double SPLIT = 0.6; // of a field: its label

static wi_obj* add_number(wi_obj* frame, int row, const char* label, int decimals, int tag) {
    wi_obj* field = wi_mk_numfld(cell(frame, 2, row, 98), label, SPLIT, decimals);
    wi_numfld_set_cb(field, ximag_fld_cb, tag);
    return field;
}

static wi_obj* add_stepper(wi_obj* frame, int row, const char* label, double inc, int decimals, int up,
                           int down, int typed) {
    wi_obj* field = wi_mk_incdecfld(cell(frame, 2, row, 98), label, SPLIT, inc);
    wi_incdecfld_decimals(field, decimals);
    wi_incdecfld_set_cb(field, ximag_fld_cb, up, ximag_fld_cb, down, ximag_fld_cb, typed);
    return field;
}

static void build_cut(wi_obj* stack, double& y) {
    wi_obj* frame = add_frame(stack, y, 6);
    win.cut = wi_mk_button(cell(frame, 2, 0, 49), "Compute Cut", 1, ximag_bttn, PI_CUT);
    wi_mk_button(cell(frame, 51, 0, 98), "End Points", 1, twopt_init, 0);
    win.fields.wct = add_stepper(frame, 1, "Length of cut (gates):", 10, 0, 13, 14, 9);
    win.fields.dct = add_number(frame, 2, "Sample spacing (gates):", 2, 9);
    win.fields.xpv = add_stepper(frame, 3, "C/r pivot pt.:", 1, 2, XI_XPV_UP, XI_XPV_DOWN, 9);
    win.fields.ypv = add_stepper(frame, 4, "Range pivot pt.:", 1, 2, XI_YPV_UP, XI_YPV_DOWN, 9);
    win.fields.ang = add_stepper(frame, 5, "Angle (deg):", 1, 1, 7, 8, 9);
}

static void build_edit(wi_obj* stack, double& y) {
    wi_obj* frame = add_frame(stack, y, 5);
    win.edit = wi_mk_button(cell(frame, 2, 0, 98), "Edit Image", 1, ximag_bttn, PI_EDIT);
    wi_set_tooltip(win.edit, "Cuts a box out of the image: two clicks, and a third to do it");
    win.fields.xc1 = add_number(frame, 1, "C/r of first sample:", 2, 12);
    win.fields.xc2 = add_number(frame, 2, "C/r of last sample:", 2, 12);
    win.fields.yc1 = add_number(frame, 3, "Range of first sample:", 2, 12);
    win.fields.yc2 = add_number(frame, 4, "Range of last sample:", 2, 12);
}

static void build_interpolate(wi_obj* stack, double& y) {
    wi_obj* frame = add_frame(stack, y, 3);
    wi_set_tooltip(wi_mk_button(cell(frame, 2, 0, 98), "Interpolate", 0, ximag_bttn, PI_INTERPOLATE),
                   "More samples for each gate, by these factors");
    win.fields.ifx = add_stepper(frame, 1, "Factor in C/r:", 1, 0, 5, 6, XI_FACTOR);
    win.fields.ify = add_stepper(frame, 2, "Factor in Range:", 1, 0, 5, 6, XI_FACTOR);
}

static void menu_hc(wi_obj* wo, int) {
    ximag_bttn(wo, XI_HARDCOPY);
}

static void build_bottom(wi_obj* stack, double& y) {
    wi_obj* frame = add_frame(stack, y, 6);
    win.menus = wi_mk_menubar(cell(frame, 2, 0, 98), 2);
    wi_menubar_pulldown(win.menus, "Image type");
    static const char* const names[3] = {"Peaks", "Contours", "Color Intensity"};
    for (int i = 0; i < 3; i++) win.style[i] = wi_menubar_button(win.menus, names[i], 1, style_cb, i);
    wi_menubar_pulldown(win.menus, "Hardcopy");
    wi_menubar_button(win.menus, "Print or PDF", 0, menu_hc, 0);

    win.peak = wi_mk_button(cell(frame, 2, 1, 49), "Peak Parameters", 1, ximag_bttn, PI_PEAK_PARAMETERS);
    win.centre = wi_mk_button(cell(frame, 51, 1, 98), "Center Image", 1, ximag_bttn, PI_CENTER);
    wi_mk_button(cell(frame, 2, 2, 49), "Flop (h)", 0, ximag_bttn, PI_FLOP);
    wi_mk_button(cell(frame, 51, 2, 98), "Flop (v)", 0, ximag_bttn, XI_FLOP_V);
    win.zoom = wi_mk_button(cell(frame, 2, 3, 49), "Zoom", 1, ximag_bttn, XI_ZOOM);
    wi_mk_button(cell(frame, 51, 3, 98), "Unzoom", 0, ximag_bttn, XI_UNZOOM);
    wi_set_tooltip(wi_mk_button(cell(frame, 2, 4, 98), "Plot Scaling", 0, pswin_init, 0),
                   "Settings of the peaks, the contours or the colours");
    win.axis = wi_mk_incdecfld(cell(frame, 2, 5, 98), "Axis Scaling:", SPLIT, 1);
    wi_incdecfld_decimals(win.axis, 2);
    wi_incdecfld_set_cb(win.axis, ximag_bttn, XI_AXIS_UP, ximag_bttn, XI_AXIS_DOWN, ximag_bttn,
                        XI_AXIS_TYPED);
    wi_incdecfld_putval(win.axis, 1);
}

static void build_panel(wi_obj* parent) {
    const bool cuts = cut_window_stands();
    const int frames = cuts ? 4 : 3, rows = (cuts ? 6 : 0) + 5 + 3 + 6;
    wi_obj* stack = wi_mk_form(parent, 100, rows + frames * (2 * FRAME_MARGIN + FRAME_GAP) + FRAME_GAP);
    win.panel = stack;
    double y = FRAME_GAP;
    if (cuts) build_cut(stack, y);
    build_edit(stack, y);
    build_interpolate(stack, y);
    build_bottom(stack, y);
}

static void build_top(wi_obj* parent) {
    wi_obj* top = wi_mk_form(parent, 100, 100);
    win.dismiss = wi_mk_button(wi_form_parent(top, 1, 6, 13, 42), "DISMISS", 0, ximag_bttn, PI_EXPORT);
    wi_mk_label(wi_form_parent(top, 14, 4, 86, 46), "Image Processing", 5);
    if (wi_hooks.help)
        win.help = wi_mk_button(wi_form_parent(top, 87, 6, 99, 42), "HELP", 0, ximag_bttn, XI_HELP);
    win.hint = wi_mk_label(wi_form_parent(top, 1, 48, 99, 98), "", 1);
}

static void ximag_expose(wi_obj*, int) {
    ximag_render();
}

void ximag_init() {
    if (win.window) return;
    wi_set_window_name("NORVA: image");
    wi_obj* fm = win.window = wi_mk_form(nullptr, 750, 580);
    wi_hlp_setprog(fm, "norva:image");
    wi_obj* stacked = wi_mk_drect(wi_form_parent(fm, 0, 0, 750, 580), 0, 0.15);
    build_top(stacked);
    wi_obj* sides = wi_mk_drect(stacked, 1, 0.35);
    build_panel(sides);
    win.area = wi_mk_drawarea(sides, ximag_expose, 0, ximag_resize, 0);
    wi_drawarea_mouse_cb(win.area, 0, ximag_mouse, MOUSE_PRESS);
    wi_drawarea_mouse_cb(win.area, 2, ximag_mouse, MOUSE_MOTION);
    wi_drawarea_mouse_cb(win.area, 3, ximag_mouse, MOUSE_MOTION);
    wi_zuvapp_quit(fm, 1, "DISMISS", ximag_bttn, PI_EXPORT);
    wi_size(fm, 750, 580);
    wi_position(fm, 160, 10);
    norva_reg(fm, "Image");
    xi.disp = vg_xw_init(wi_drawarea_getwidget(win.area), 6, 6, 0);
}

// --- What they show

static const char* hint_for(int mode) {
    switch (mode) {
    case PI_EDIT:
        return "Left button: two corners of a box; once more cuts it out.  Right: cuts it out at once.  "
               "Middle: "
               "gives up.";
    case XI_ZOOM:
        return "Left button: two corners of a box; once more zooms in.  Right: zooms at once.  Middle: gives "
               "up.";
    case PI_PEAK_PARAMETERS:
        return "Right button: measures the peak near the pointer.  Left: the crosshair follows the pointer "
               "again.";
    case PI_CENTER:
        return "Right button: centers on the peak near the pointer.  Middle: holds the crosshair; then the "
               "right "
               "button centers on exactly this point.";
    case PI_CUT:
        return cut_window_stands()
                   ? "Left button: pivot and end of the cut.  Right: opens it.  Middle: gives up."
                   : "";
    default: return "";
    }
}

void ximag_reset_mbut() {
    if (!win.window) return;
    const int mode = xi.pip.mode;
    if (win.cut) wi_button_setstate(win.cut, mode == PI_CUT);
    wi_button_setstate(win.edit, mode == PI_EDIT);
    wi_button_setstate(win.peak, mode == PI_PEAK_PARAMETERS);
    wi_button_setstate(win.zoom, mode == XI_ZOOM);
    wi_button_setstate(win.centre, mode == PI_CENTER);
    wi_label(win.hint, hint_for(mode));
    if (mode != PI_PEAK_SCALING) close_peak_scaling();
    if (mode != PI_CUT) twopt_close();
}

void ximag_show_style() {
    for (int i = 0; i < 3; i++) wi_menubar_setstate(win.menus, win.style[i], xi.pip.imgtype == i);
}

double axis_scaling_field() {
    return wi_incdecfld_getval(win.axis);
}

void put_axis_scaling_field(double v) {
    wi_incdecfld_putval(win.axis, v);
}

void ximag_refresh_controls() {
    if (!win.window) return;
    const bool heard = ximag_heard();
    wi_enable(win.dismiss, heard);
    wi_enable(win.panel, heard);
    if (win.help) wi_enable(win.help, heard);
    scaling_refresh();
}

} // namespace norva
