// Crosshair, box, cut and readout over the image; the line of the last action.
#include "draw/image_overlays.h"

#include "state/defaults.h"
#include "vgph/vgsym.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>

namespace norva {

constexpr float READOUT_HEIGHT = 0.09f, READOUT_GAP = 0.08f;
constexpr float AXIS_TEXTS = 0.45f; // below the frame

static vgobject_ptr new_overlay() {
    vgobject_ptr obj = vg_new_object();
    vg_attr_object(*obj, vg_overlay_color, 0, 0);
    return obj;
}

static void add_segment(_vgobject& obj, float x0, float y0, float x1, float y1) {
    vg_plot_object(obj, x0, y0, 0);
    vg_plot_object(obj, x1, y1, 1);
}

void put_overlay(const _vgdisplay& disp, vgobject_ptr& shown, vgobject_ptr next) {
    vg_unrender_object(disp, shown.get());
    shown = std::move(next);
    vg_render_object(disp, shown.get());
}

vgobject_ptr draw_vg_xhr(const _vgdataframe& df, double x, double y) {
    if (!vg_indrect(df.datbox, x, y)) return nullptr;
    vgobject_ptr obj = new_overlay();
    const _vgrect& box = df.pltbox;
    const float xp = vg_x_loc(df, x), yp = vg_y_loc(df, y);
    add_segment(*obj, box.x0, yp, box.x1, yp);
    add_segment(*obj, xp, box.y0, xp, box.y1);
    return obj;
}

vgobject_ptr draw_vg_zmbox(const _vgdataframe& df, double xc1, double yc1, double xc2, double yc2) {
    if (!std::isfinite(xc1) || !std::isfinite(yc1) || !std::isfinite(xc2) || !std::isfinite(yc2))
        return nullptr;
    const auto xplace = [&](double v) { return vg_x_loc(df, std::clamp(v, df.datbox.x0, df.datbox.x1)); };
    const auto yplace = [&](double v) { return vg_y_loc(df, std::clamp(v, df.datbox.y0, df.datbox.y1)); };
    const float x0 = xplace(xc1), y0 = yplace(yc1), x1 = xplace(xc2), y1 = yplace(yc2);
    vgobject_ptr obj = new_overlay();
    if (x0 == x1 || y0 == y1) { // drawn to and fro a line would take itself away
        add_segment(*obj, x0, y0, x1, y1);
        return obj;
    }
    vg_plot_object(*obj, x0, y0, 0);
    vg_plot_object(*obj, x1, y0, 1);
    vg_plot_object(*obj, x1, y1, 1);
    vg_plot_object(*obj, x0, y1, 1);
    vg_plot_object(*obj, x0, y0, 1);
    return obj;
}

vgobject_ptr draw_vg_cut(const _vgdataframe& df, double xpv, double ypv, float& wct, float& ang, double x,
                         double y) {
    _vgdrect line{xpv, ypv, x, y};
    if (wct == 0) {
        const double dx = x - xpv, dy = y - ypv;
        wct = static_cast<float>(2 * std::hypot(dx, dy));
        ang = static_cast<float>(std::atan2(dy, dx) * 180 / std::numbers::pi);
    } else {
        const double rad = ang * std::numbers::pi / 180;
        const double cx = std::cos(rad) * wct / 2, cy = std::sin(rad) * wct / 2;
        line = {xpv - cx, ypv - cy, xpv + cx, ypv + cy};
    }
    _vgdrect seen;
    if (!std::isfinite(line.x0 + line.y0 + line.x1 + line.y1) || !vg_clip(df.datbox, line, seen))
        return nullptr;
    vgobject_ptr obj = new_overlay();
    add_segment(*obj, vg_x_loc(df, seen.x0), vg_y_loc(df, seen.y0), vg_x_loc(df, seen.x1),
                vg_y_loc(df, seen.y1));
    return obj;
}

// --- Readout

static std::string number(const char* label, double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%s %4.3f", label, value);
    return text;
}

static std::string amplitude_line(double amplitude, double ref) {
    std::string text = number("Amplitude:", amplitude);
    if (amplitude > 0 && ref > 0) {
        char level[48];
        std::snprintf(level, sizeof level, "  (%.1f dB)", 20 * std::log10(amplitude / ref));
        text += level;
    }
    return text;
}

vgobject_ptr draw_vg_syms(const _vgdisplay& disp, const _vgdataframe& df, double x, double y,
                          double amplitude, double ref) {
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(amplitude)) return nullptr;
    const std::array<std::string, 3> lines{number("Range:", y), number("Crossrange:", x),
                                           amplitude_line(amplitude, ref)};
    float width = 0;
    for (const std::string& line : lines) width = std::max(width, vg_symlen(READOUT_HEIGHT, line));
    const float pitch = 1.6f * READOUT_HEIGHT, height = 2 * pitch + READOUT_HEIGHT;
    // To the upper right of the point; to its left or below where there is no room. Where the frame is too
    // narrow, over the crosshair; where it is too low, under the axis.
    const _vgrect& box = df.pltbox;
    const float xp = vg_x_loc(df, x), yp = vg_y_loc(df, y);
    float left = xp + READOUT_GAP, top = yp + READOUT_GAP + height;
    if (left + width > box.x1) left = xp - READOUT_GAP - width;
    if (left < box.x0) left = std::max(box.x1 - width, box.x0);
    if (width > box.x1 - box.x0) left = (box.x0 + box.x1 - width) / 2;
    if (top > box.y1) top = yp - READOUT_GAP;
    if (top - height < box.y0) top = box.y0 - AXIS_TEXTS;
    left = std::clamp(left, 0.0f, std::max(disp.xsize - width, 0.0f));
    top = std::clamp(top, std::min(height, disp.ysize), disp.ysize);
    vgobject_ptr obj = new_overlay();
    float foot = top - READOUT_HEIGHT;
    for (const std::string& line : lines) {
        vg_obj_sym(*obj, left, foot, READOUT_HEIGHT, 0, line);
        foot -= pitch;
    }
    return obj;
}

// --- The last action

static constexpr std::array image_actions = {"Initialization",
                                             "Flop Image",
                                             "Change Weight",
                                             "Change Peak Scaling",
                                             "Edit",
                                             "Interpolate",
                                             "Peak Parameters",
                                             "Status",
                                             "Compute Cut",
                                             "Center Image",
                                             "Polar Format Initialization"};

// The actions of the cut processor; an empty name leaves the line as it is.
static constexpr std::array cut_actions = {"Initialization",
                                           "change weight",
                                           "data edit",
                                           "subtract phase slope",
                                           "subtract phase spline",
                                           "remove phase jump",
                                           "set phase to zero",
                                           "set amplitude to unity",
                                           "differentiate",
                                           "restore differentiate",
                                           "deweight for display",
                                           "show previous state",
                                           "",
                                           "",
                                           "pk params/n xhrs",
                                           "pk params/xhr pair",
                                           "measure phase slope",
                                           "measure phase spline",
                                           "two scatterer algorithm",
                                           "parallel cut",
                                           "perpendicular cut",
                                           "shft pt to orig in img",
                                           "motion compensate",
                                           "",
                                           "backup",
                                           "",
                                           "exit",
                                           "reentry",
                                           "",
                                           "",
                                           "1-D initialization"};

template <std::size_t N> static const char* entry(const std::array<const char*, N>& table, int mode) {
    return mode >= 0 && mode < static_cast<int>(N) ? table[static_cast<std::size_t>(mode)] : "";
}

void draw_vg_mdesc(const _vgdisplay& disp, vgobject_ptr& vobj, int mode, int tag) {
    const std::string name = tag == 1 ? entry(image_actions, mode) : entry(cut_actions, mode);
    if (name.empty()) return;
    const float height = def.cbox_ysz / 3;
    const float y = disp.ysize - (def.cbox_ysz + height) / 2;
    vgobject_ptr line = vg_symbol(def.cbox_xsz + 0.2f, y, height, 0, "last action: " + name);
    put_overlay(disp, vobj, std::move(line));
}

} // namespace norva
