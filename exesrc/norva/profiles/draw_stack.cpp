// Layout of a stack of profiles: curves, axes, notes.
#include "draw_stack.h"

#include "draw/overlays.h"
#include "signal/numbers.h"
#include "stack_lines.h"
#include "vgph/vgsym.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace norva {

// Margins around the box, plot inches: room for tic labels, axis labels and notes.
constexpr float LEFT = 0.55f, RIGHT = 0.2f, BOTTOM = 0.52f, TOP = 0.8f;
constexpr float NOTE_HEIGHT = 0.08f;
constexpr double HEIGHT_UNIT = 0.4;  // plot inches of a profile height of 1: tracks stand out, and their tips
                                     // still lie close to the times they belong to
constexpr int MIN_ROW_PIXELS = 6;    // least distance of two curves
constexpr double MAX_HEADROOM = 0.4; // of the box
constexpr int CURVE_COLOR = 3, RIM = 1; // palette

record_range snap_to_records(double t0, double dt, int nrec, double& stime, double& etime) {
    record_range rows;
    rows.first = std::clamp(nint((stime - t0) / dt), 0, std::max(nrec - 1, 0));
    rows.last = std::clamp(nint((etime - t0) / dt), rows.first + 1, std::max(nrec, rows.first + 1));
    stime = t0 + rows.first * dt;
    etime = t0 + rows.last * dt;
    return rows;
}

std::string nsuf(int n) {
    if (n / 10 % 10 == 1) return "th";
    switch (n % 10) {
    case 1: return "st";
    case 2: return "nd";
    case 3: return "rd";
    default: return "th";
    }
}

static double shown_value(double value, bool root) {
    return root ? std::sqrt(value) : value;
}

// The curves of every p.every-th record. Times stand at y0, y0 + yscale*dt, ... plot inches; ppi: pixels per
// inch.
static vgobject_ptr draw_curves(const stack_picture& p, record_range rows, int ncol, double yscale,
                                double ppi) {
    vgobject_ptr obj = vg_new_object();
    vg_attr_object(*obj, CURVE_COLOR, 0, 0);
    const _vgdataframe& df = p.df;
    std::vector<float> x(ncol), y(ncol);
    for (int c = 0; c < ncol; c++) x[c] = vg_x_loc(df, p.x1 + p.dx * column_centre(c, ncol, p.n));
    hidden_lines lines(*obj, x, df.y0 + df.ylen);
    const double unit = p.peak > 0 ? HEIGHT_UNIT * p.height / p.peak : 0;
    for (int j = rows.first; j < rows.last; j += p.every) {
        reduce_row(p.data.subspan(static_cast<std::size_t>(j) * p.n, p.n), y);
        // Well inside a pixel, so that low sidelobes do not make a baseline jump between two of them.
        const double pixel = std::floor((df.y0 + (j - rows.first) * p.dt * yscale) * ppi);
        const double base = (pixel + 0.25) / ppi;
        for (float& v : y) {
            const double value = std::min(shown_value(v, p.root), p.truncation * p.peak);
            v = static_cast<float>(base + unit * value);
        }
        lines.add(y);
    }
    return obj;
}

static void add_axis(_vgobject& obj, float x0, float y0, float len, double v0, double v1, bool upright,
                     bool far_side, bool labels) {
    _vgaxisparm a;
    a.lim0 = v0;
    a.lim1 = v1;
    a.x0 = x0;
    a.y0 = y0;
    a.alen = len;
    a.r90 = upright;
    a.reverse = far_side;
    a.dolabs = labels;
    vg_draw_axis(obj, a);
}

// The box: gates below, the other unit above, time up to the last record on both sides.
static vgobject_ptr draw_axes(const stack_picture& p, float time_len) {
    const _vgdataframe& df = p.df;
    const float right = df.x0 + df.xlen, top = df.y0 + df.ylen, middle = df.x0 + df.xlen / 2;
    vgobject_ptr obj = vg_new_object();
    vg_attr_object(*obj, RIM, 0, 0);
    add_axis(*obj, df.x0, df.y0, df.xlen, df.vx0, df.vx1, false, false, true);
    add_centred_text(*obj, middle, df.y0 - 0.4f, vg_axis_label_height, p.x_label);
    if (p.far_unit > 0) {
        add_axis(*obj, df.x0, top, df.xlen, df.vx0 * p.far_unit, df.vx1 * p.far_unit, false, true, true);
        add_centred_text(*obj, middle, top + 0.27f, vg_axis_label_height, p.far_label);
    } else {
        vg_plot_object(*obj, df.x0, top, 0);
        vg_plot_object(*obj, right, top, 1);
    }
    add_axis(*obj, df.x0, df.y0, time_len, p.stime, p.etime, true, false, true);
    add_axis(*obj, right, df.y0, time_len, p.stime, p.etime, true, true, false);
    for (float x : {df.x0, right}) {
        vg_plot_object(*obj, x, df.y0 + time_len, 0);
        vg_plot_object(*obj, x, top, 1);
    }
    const float label = vg_symlen(vg_axis_label_height, p.time_label);
    vg_obj_sym(*obj, df.x0 - 0.28f, df.y0 + (time_len - label) / 2, vg_axis_label_height, 90, p.time_label);
    return obj;
}

// Which curves are drawn when there are more than can be told apart; ends at `right`.
static vgobject_ptr draw_selection_note(int every, float right) {
    vgobject_ptr obj = vg_new_object();
    vg_attr_object(*obj, RIM, 0, 0);
    const std::string text =
        "*note: " + formatted("every %d%s profile is plotted", every, nsuf(every).c_str());
    vg_obj_sym(*obj, right - vg_symlen(NOTE_HEIGHT, text), BOTTOM - 0.4f, NOTE_HEIGHT, 0, text);
    return obj;
}

void draw_stack(const _vgdisplay& disp, stack_picture& p) {
    const int nrec = p.n > 0 ? static_cast<int>(p.data.size() / p.n) : 0;
    if (!(p.dt > 0)) p.dt = 1;
    const record_range rows = snap_to_records(p.t0, p.dt, nrec, p.stime, p.etime);
    const bool empty = nrec == 0;
    p.peak = 0;
    if (!empty) {
        const auto shown = p.data.subspan(static_cast<std::size_t>(rows.first) * p.n,
                                          static_cast<std::size_t>(rows.last - rows.first) * p.n);
        p.peak = shown_value(largest_power(shown), p.root);
    }

    _vgdataframe& df = p.df;
    df.x0 = LEFT;
    df.y0 = BOTTOM;
    df.xlen = std::max(disp.xsize - LEFT - RIGHT, 0.5f);
    df.ylen = std::max(disp.ysize - BOTTOM - TOP, 0.5f);
    const double headroom =
        std::min(HEIGHT_UNIT * p.height * std::min(p.truncation, 1.0), MAX_HEADROOM * df.ylen);
    const float time_len = static_cast<float>(df.ylen - headroom);
    const double yscale = time_len / (p.etime - p.stime);
    df.vx0 = p.x1;
    df.vx1 = p.x1 + static_cast<double>(std::max(p.n - 1, 1)) * (p.dx > 0 ? p.dx : 1);
    df.vy0 = p.stime;
    df.vy1 = p.stime + df.ylen / yscale;
    vg_gph_init(df);

    const double fit = time_len * disp.ypinch / MIN_ROW_PIXELS; // curves that can be told apart
    p.every = std::max(1, static_cast<int>(std::ceil((rows.last - rows.first) / std::max(fit, 1.0))));
    p.frame = vg_new_frame();
    if (!empty) {
        const int pixels = std::max(2, static_cast<int>(df.xlen * disp.xpinch));
        vg_add_object(*p.frame,
                      draw_curves(p, rows, std::min(pixels, p.n), yscale, std::max(disp.ypinch, 1.0f)));
    }
    vg_add_object(*p.frame, draw_axes(p, time_len));
    if (p.every > 1) vg_add_object(*p.frame, draw_selection_note(p.every, disp.xsize - RIGHT));
}

void add_stack_notes(const _vgdisplay& disp, _vgframe& frame, std::span<const std::string> notes) {
    vgobject_ptr obj = vg_new_object();
    vg_attr_object(*obj, RIM, 0, 0);
    const float gap = 0.25f;
    float x = 1.1f; // clear of the control box
    for (const std::string& note : notes) {
        vg_obj_sym(*obj, x, disp.ysize - 0.2f, NOTE_HEIGHT, 0, note);
        x += vg_symlen(NOTE_HEIGHT, note) + gap;
    }
    vg_add_object(frame, std::move(obj));
}

} // namespace norva
