// A line through a point of a data frame, the header of a hardcopy, centred text.
#include "draw/overlays.h"

#include "vgph/vgsym.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace norva {

// Narrows low..high to the parameters u at which start + u*step lies between a and b.
static void clip_to_slab(double start, double step, double a, double b, double& low, double& high) {
    const double first = std::min(a, b), last = std::max(a, b);
    if (step == 0) {
        if (start < first || start > last) high = low - 1;
        return;
    }
    double enter = (first - start) / step, leave = (last - start) / step;
    if (enter > leave) std::swap(enter, leave);
    low = std::max(low, enter);
    high = std::min(high, leave);
}

vgobject_ptr draw_vg_line(const _vgdataframe& df, double x, double y, double ang) {
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(ang)) return nullptr;
    const double rad = ang * std::numbers::pi / 180;
    // A right angle is exactly upright, so that rounding does not lean the line over a tall frame.
    const double dx = std::fabs(ang) == 90 ? 0 : std::cos(rad), dy = ang == 0 ? 0 : std::sin(rad);
    double low = -std::numeric_limits<double>::infinity(), high = -low;
    clip_to_slab(x, dx, df.vx0, df.vx1, low, high);
    clip_to_slab(y, dy, df.vy0, df.vy1, low, high);
    if (!(low < high) || std::isinf(low) || std::isinf(high)) return nullptr;
    vgobject_ptr line = vg_new_object();
    vg_attr_object(*line, vg_overlay_color, 0, 3);
    vg_plot_object(*line, vg_x_loc(df, x + low * dx), vg_y_loc(df, y + low * dy), 0);
    vg_plot_object(*line, vg_x_loc(df, x + high * dx), vg_y_loc(df, y + high * dy), 1);
    return line;
}

void add_centred_text(_vgobject& obj, float x, float y, float height, std::string_view text) {
    vg_obj_sym(obj, x - vg_symlen(height, text) / 2, y, height, 0, text);
}

void hc_hdr(_vghardcopy& hc, float x, float y, std::string_view jfile) {
    const std::string text = "Journal File: " + std::string(jfile);
    const vgobject_ptr header = vg_symbol(x, y, 0.1f, 0, text);
    vg_hc_object(hc, header.get());
}

} // namespace norva
