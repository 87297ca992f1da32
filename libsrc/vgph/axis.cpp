// Axes: line, tics, labels, and the frame made of four of them.

#include "axis_step.h"
#include "number_text.h"
#include "vgph/vggph.h"
#include "vgph/vgsym.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

namespace norva {

constexpr float tic_major = 0.1f, tic_middle = 0.075f, tic_minor = 0.05f;
constexpr float label_near = 0.135f;   // edge of a tic label next to the line
constexpr double label_overhang = 0.1; // how far a label may run past the axis

// Lines of text lie along the axis and read in its direction, so one routine serves all four sides. u counts
// inches along the axis, v inches off it on the side of the tics.

static void plot(_vgobject& obj, const _vgaxisparm& a, double u, double v, int pendown) {
    const double side = a.reverse ? v : -v;
    const double x = a.r90 ? side : u, y = a.r90 ? u : side;
    vg_plot_object(obj, static_cast<float>(a.x0 + x), static_cast<float>(a.y0 + y), pendown);
}

static void draw_tic(_vgobject& obj, const _vgaxisparm& a, double u, double len) {
    plot(obj, a, u, 0, 0);
    plot(obj, a, u, len, 1);
}

// Whether the foot of the letters is turned away from the line.
static bool foot_outside(const _vgaxisparm& a) {
    return (a.r90 != 0) == (a.reverse != 0);
}

// A text that starts at u, its foot at v.
static void draw_text(_vgobject& obj, const _vgaxisparm& a, double u, double v, const std::string& text) {
    const double side = a.reverse ? v : -v;
    const double x = a.r90 ? side : u, y = a.r90 ? u : side;
    vg_obj_sym(obj, static_cast<float>(a.x0 + x), static_cast<float>(a.y0 + y), vg_tic_label_height,
               a.r90 ? 90.0f : 0.0f, text);
}

// --- Tic labels

namespace {
struct tic_label {
    std::string text;
    double u0, u1;    // from, to
    long long number; // which multiple of the step: the zero of every axis is number 0
};
} // namespace

// Puts the label's middle at `u`. One that would run too far past an end is moved inward, as long as it still
// stands at its tic; otherwise the answer is false.
static bool place_label(const _vgaxisparm& a, double u, tic_label& lab) {
    const double len = vg_symlen(vg_tic_label_height, lab.text);
    const double low = -label_overhang, high = a.alen + label_overhang - len;
    if (high < low) return false;
    lab.u0 = std::clamp(u - len / 2, low, high);
    lab.u1 = lab.u0 + len;
    return u >= lab.u0 && u <= lab.u1;
}

static bool labels_collide(const std::vector<tic_label>& labels, long long stride) {
    constexpr double gap = 0.6 * vg_tic_label_height;
    const tic_label* last = nullptr;
    for (const tic_label& lab : labels) {
        if (lab.number % stride != 0) continue;
        if (last && lab.u0 < last->u1 + gap) return true;
        last = &lab;
    }
    return false;
}

static void draw_label(_vgobject& obj, const _vgaxisparm& a, const tic_label& lab) {
    const double foot = foot_outside(a) ? label_near + vg_tic_label_height : label_near;
    draw_text(obj, a, lab.u0, foot, lab.text);
}

// The labels at the major tics: all of them, or where they would run into each other every second, fifth ...
// one.
static void draw_tic_labels(_vgobject& obj, const _vgaxisparm& a) {
    std::vector<tic_label> labels;
    for (int i = 0; i < a.nlabs; i++) {
        tic_label lab{tic_text(a.labvals[i], a.inctens), 0, 0, std::llround(a.labvals[i] / a.incval)};
        if (place_label(a, (a.labvals[i] - a.lim0j) * a.scale, lab)) labels.push_back(lab);
    }
    long long stride = 1;
    for (long long s : {1, 2, 5, 10, 20, 50}) {
        stride = s;
        if (!labels_collide(labels, s)) break;
    }
    for (const tic_label& lab : labels)
        if (lab.number % stride == 0) draw_label(obj, a, lab);
}

// --- The parts of an axis

static void draw_nospan_tic(_vgobject& obj, const _vgaxisparm& a) {
    const double middle = a.alen / 2;
    draw_tic(obj, a, middle, tic_major);
    if (!a.dolabs) return;
    tic_label lab{label_general(a.labvals[0], 8), 0, 0, 0};
    const double len = vg_symlen(vg_tic_label_height, lab.text);
    lab.u0 = middle - len / 2;
    draw_label(obj, a, lab);
}

static void draw_tics(_vgobject& obj, const _vgaxisparm& a) {
    const double minor_step = a.incval / 10;
    const bool minors = minor_step * a.scale > a.min_minor;
    const double low = std::min(a.lim0j, a.lim1j), high = std::max(a.lim0j, a.lim1j);
    const int middle_every = a.inctype == 5 ? 2 : 5;
    for (int i = 0; i <= (a.nlabs + 2) * 10; i++) {
        const int major = i / 10 - 1, minor = i % 10;
        if (minor && !minors) continue;
        const bool known = major >= 0 && major < a.nlabs;
        const double v = (known ? a.labvals[major] : a.labvals[0] + major * a.incval) + minor * minor_step;
        if (v < low || v > high) continue;
        const float len = minor == 0 ? tic_major : minor % middle_every == 0 ? tic_middle : tic_minor;
        draw_tic(obj, a, (v - a.lim0j) * a.scale, len);
    }
}

// Both limits, boxed, outside the tic labels: the first starts and the second ends a little past the axis.
// Where the axis is too short for both they are moved apart.
static void do_end_labels(_vgobject& obj, const _vgaxisparm& a) {
    constexpr float gap = 0.02f;
    const std::string texts[2] = {label_general(a.lim0, 7), label_general(a.lim1, 7)};
    const double len0 = vg_symlen(vg_tic_label_height, texts[0]);
    const double len1 = vg_symlen(vg_tic_label_height, texts[1]);
    double u0 = -label_overhang, u1 = a.alen + label_overhang - len1;
    const double overlap = u0 + len0 + 4 * gap - u1;
    if (overlap > 0) {
        u0 -= overlap / 2;
        u1 += overlap / 2;
    }
    const double foot = foot_outside(a) ? (a.dolabs ? 0.335 : 0.265) : (a.dolabs ? 0.225 : 0.155);
    for (int end : {0, 1}) {
        vgobject_ptr label = vg_new_object();
        draw_text(*label, a, end ? u1 : u0, foot, texts[end]);
        vg_box_obj(*label, gap);
        vg_merge_object(obj, std::move(label));
    }
}

void vg_draw_axis(_vgobject& obj, _vgaxisparm& a) {
    cal_inc(a, std::max(3, static_cast<int>(std::clamp(a.alen, 0.0f, 1000.0f))));
    plot(obj, a, 0, 0, 0);
    plot(obj, a, a.alen, 0, 1);
    a.scale = 0;
    if (a.nospan) return draw_nospan_tic(obj, a);
    a.scale = a.alen / (a.lim1j - a.lim0j);
    draw_tics(obj, a);
    if (a.dolabs) draw_tic_labels(obj, a);
    if (a.doendlabs) do_end_labels(obj, a);
}

vgobject_ptr vg_axis(float x0, float y0, float len, double v0, double v1, int horiz, int left, int dolab,
                     int dolims) {
    _vgaxisparm a;
    a.x0 = x0;
    a.y0 = y0;
    a.alen = len;
    a.lim0 = v0;
    a.lim1 = v1;
    a.r90 = !horiz;
    a.reverse = !left;
    a.dolabs = dolab;
    a.doendlabs = dolims;
    vgobject_ptr obj = vg_new_object();
    vg_draw_axis(*obj, a);
    return obj;
}

// A title whose middle stands at `middle` inches along the side.
static void add_title(_vgobject& obj, float x, float y, float middle, bool vertical,
                      const std::string& text) {
    const float half = vg_symlen(vg_axis_label_height, text) / 2;
    const float along = middle - half;
    vg_obj_sym(obj, vertical ? x : x + along, vertical ? y + along : y, vg_axis_label_height,
               vertical ? 90.0f : 0.0f, text);
}

vgobject_ptr vg_standard_frame(const _vgdataframe& df) {
    const float x1 = df.x0 + df.xlen, y1 = df.y0 + df.ylen;
    vgobject_ptr obj = vg_new_object();
    auto add = [&obj](vgobject_ptr axis) { vg_merge_object(*obj, std::move(axis)); };

    add(vg_axis(df.x0, df.y0, df.xlen, df.vx0, df.vx1, 1, 1, 1, 0));
    add(vg_axis(df.x0, df.y0, df.ylen, df.vy0, df.vy1, 0, 1, 1, 0));
    add(vg_axis(df.x0, y1, df.xlen, df.vx0, df.vx1, 1, 0, 0, df.dolims));
    add(vg_axis(x1, df.y0, df.ylen, df.vy0, df.vy1, 0, 0, 0, df.dolims));
    add_title(*obj, df.x0, df.y0 - 0.36f, df.xlen / 2, false, df.xlabel);
    add_title(*obj, df.x0 - 0.26f, df.y0, df.ylen / 2, true, df.ylabel);

    if (df.doaux) {
        const float left = df.x0 - 0.42f, right = x1 + 0.35f;
        add(vg_axis(left, df.y0, df.ylen, df.vauxy0, df.vauxy1, 0, 1, 1, 0));
        add(vg_axis(right, df.y0, df.ylen, df.vauxy0, df.vauxy1, 0, 0, 0, df.dolims));
        add_title(*obj, left - 0.26f, df.y0, df.ylen / 2, true, df.auxlabel);
    }
    return obj;
}

} // namespace norva
