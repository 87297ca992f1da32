// Circles and spots as vectors.

#include "vgph/vggph.h"
#include "vgph/vgsym.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace norva {

static int idensity = 300; // dots per inch

void vg_vecgen_dotdensity(int iden) {
    if (iden > 0) idensity = iden;
}

// The radius, one dot at least; 0 when it cannot be drawn.
static double usable_radius(float x, float y, float r) {
    if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(r)) return 0;
    return std::max(static_cast<double>(r), 1.0 / idensity);
}

// Where the strokes go: to the list as they are, or the part of them inside a box.
namespace {
struct plain_pen {
    std::vector<_vgvec>& out;
    void move(double x, double y) { add(vg_pen_move, x, y); }
    void draw(double x, double y) { add(vg_pen_draw, x, y); }
    void add(int pen, double x, double y) {
        out.push_back({pen, static_cast<float>(x), static_cast<float>(y)});
    }
};

struct clip_pen {
    plain_pen to;
    _vgdrect box;
    double x = 0, y = 0; // where the unclipped pen is
    bool down = false;   // and the clipped one with it
    void move(double nx, double ny) {
        x = nx;
        y = ny;
        down = false;
    }
    void draw(double nx, double ny) {
        _vgdrect part;
        if (vg_clip(box, {x, y, nx, ny}, part)) {
            if (!down) to.move(part.x0, part.y0);
            to.draw(part.x1, part.y1);
            down = part.x1 == nx && part.y1 == ny;
        } else {
            down = false;
        }
        x = nx;
        y = ny;
    }
};
} // namespace

// Chords whose middle is at most d = 1/density inside the circle: half the angle of a chord has the cosine (r
// - d)/r.
template <class Pen> static void circle(Pen& pen, double x, double y, double r) {
    const double d = 1.0 / idensity;
    const double c = std::min((r - d) / r, 0.999876);
    const int n = std::max(2, static_cast<int>(std::numbers::pi / std::acos(c)));
    pen.move(x + r, y);
    for (int i = 1; i < n; i++) {
        const double a = 2 * std::numbers::pi * i / n;
        pen.draw(x + r * std::cos(a), y + r * std::sin(a));
    }
    pen.draw(x + r, y);
}

// The outline, then rows to and fro between low and high, at most 1/density apart.
template <class Pen> static void spot(Pen& pen, double x, double y, double r, double low, double high) {
    circle(pen, x, y, r);
    low = std::max(low, y - r);
    high = std::min(high, y + r);
    if (!(low < high)) return;
    constexpr double most_rows = 32768; // more than any device has
    const double nrow = std::clamp(std::ceil((high - low) * idensity), 1.0, most_rows);
    const double step = (high - low) / nrow;
    bool first = true;
    double side = -1;
    for (int k = 0; k < static_cast<int>(nrow); k++) {
        const double yk = low + (k + 0.5) * step;
        const double half = std::sqrt(std::max(0.0, r * r - (yk - y) * (yk - y)));
        first ? pen.move(x + side * half, yk) : pen.draw(x + side * half, yk);
        side = -side;
        pen.draw(x + side * half, yk);
        first = false;
    }
}

void vg_vecgen_circle(float x, float y, float r, std::vector<_vgvec>& out) {
    const double ru = usable_radius(x, y, r);
    if (ru == 0) return;
    plain_pen pen{out};
    circle(pen, x, y, ru);
}

void vg_vecgen_spot(float x, float y, float r, std::vector<_vgvec>& out) {
    const double ru = usable_radius(x, y, r);
    if (ru == 0) return;
    plain_pen pen{out};
    spot(pen, x, y, ru, y - ru, y + ru);
}

static clip_pen clipped(const _vgrect& clip, std::vector<_vgvec>& out) {
    _vgdrect box{clip.x0, clip.y0, clip.x1, clip.y1};
    vg_norm_drect(box);
    return {{out}, box};
}

void vg_vecgen_circle_clip(float x, float y, float r, const _vgrect& clip, std::vector<_vgvec>& out) {
    const double ru = usable_radius(x, y, r);
    if (ru == 0) return;
    clip_pen pen = clipped(clip, out);
    circle(pen, x, y, ru);
}

void vg_vecgen_spot_clip(float x, float y, float r, const _vgrect& clip, std::vector<_vgvec>& out) {
    const double ru = usable_radius(x, y, r);
    if (ru == 0) return;
    clip_pen pen = clipped(clip, out);
    spot(pen, x, y, ru, pen.box.y0, pen.box.y1);
}

static void clipped_shape(_vgobject& obj, int pen, float r, float x, float y, const _vgrect& box) {
    vg_plot_obj(obj, box.x0, box.y0, vg_pen_clip_low);
    vg_plot_obj(obj, box.x1, box.y1, vg_pen_clip_high);
    vg_plot_obj(obj, x, y, vg_pen_move);
    vg_plot_obj(obj, r, 0, pen);
}

void vg_circle_clip(_vgobject& obj, float r, float x, float y, float x0, float y0, float x1, float y1) {
    clipped_shape(obj, vg_pen_circle_clip, r, x, y, {x0, y0, x1, y1});
}

void vg_spot_clip(_vgobject& obj, float r, float x, float y, float x0, float y0, float x1, float y1) {
    clipped_shape(obj, vg_pen_spot_clip, r, x, y, {x0, y0, x1, y1});
}

} // namespace norva
