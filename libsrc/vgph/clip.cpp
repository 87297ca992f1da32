// Rectangles, and segments cut at them.

#include "vgph/vggph.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace norva {

template <class Rect> static void norm(Rect& r) {
    if (r.x0 > r.x1) std::swap(r.x0, r.x1);
    if (r.y0 > r.y1) std::swap(r.y0, r.y1);
}

void vg_norm_rect(_vgrect& r) {
    norm(r);
}
void vg_norm_drect(_vgdrect& r) {
    norm(r);
}

int vg_inrect(const _vgrect& r, float x, float y) {
    return x >= r.x0 && x <= r.x1 && y >= r.y0 && y <= r.y1;
}
int vg_indrect(const _vgdrect& r, double x, double y) {
    return x >= r.x0 && x <= r.x1 && y >= r.y0 && y <= r.y1;
}

// Place of a point on the 3 by 3 board around the box: column -1 left, 0 within, 1 right, row -1 below, 0, 1
// above. Edges count as within.
namespace {
struct board_place {
    int column, row;
};
} // namespace

static board_place vg_tictactoe(const _vgdrect& box, double x, double y) {
    return {x < box.x0 ? -1 : x > box.x1 ? 1 : 0, y < box.y0 ? -1 : y > box.y1 ? 1 : 0};
}

int vg_x_seg(const _vgdrect& line, double x, double& y) {
    if (!(std::min(line.x0, line.x1) <= x && x <= std::max(line.x0, line.x1))) return 0;
    const double dx = line.x1 - line.x0;
    y = dx == 0 ? line.y0 : std::lerp(line.y0, line.y1, (x - line.x0) / dx);
    return 1;
}

int vg_y_seg(const _vgdrect& line, double y, double& x) {
    return vg_x_seg({line.y0, line.x0, line.y1, line.x1}, y, x);
}

// Moves the end (x, y) of the segment to the edges it lies beyond. False: the segment misses the box, or
// rounding made it miss a corner. `hits`: it is known not to miss.
static bool pull_inside(const _vgdrect& box, const _vgdrect& line, bool hits, double& x, double& y) {
    board_place at = vg_tictactoe(box, x, y);
    if (at.column) {
        const double edge = at.column < 0 ? box.x0 : box.x1;
        if (!vg_x_seg(line, edge, y)) return false;
        x = edge;
        at.row = vg_tictactoe(box, x, y).row;
    }
    if (at.row) {
        const double edge = at.row < 0 ? box.y0 : box.y1;
        if (!vg_y_seg(line, edge, x)) return false;
        y = edge;
    }
    if (hits) x = std::clamp(x, box.x0, box.x1);
    return vg_indrect(box, x, y);
}

int vg_clip(const _vgdrect& box, const _vgdrect& line, _vgdrect& out) {
    if (!std::isfinite(line.x0) || !std::isfinite(line.y0) || !std::isfinite(line.x1) ||
        !std::isfinite(line.y1))
        return 0;
    const board_place a = vg_tictactoe(box, line.x0, line.y0), b = vg_tictactoe(box, line.x1, line.y1);
    if ((a.column && a.column == b.column) || (a.row && a.row == b.row)) return 0;
    out = line;
    const bool a_in = pull_inside(box, line, false, out.x0, out.y0);
    const bool b_in = pull_inside(box, line, false, out.x1, out.y1);
    if (a_in == b_in) return a_in;
    // One end came in, so the other one can.
    double& x = a_in ? out.x1 : out.x0;
    double& y = a_in ? out.y1 : out.y0;
    x = a_in ? line.x1 : line.x0;
    y = a_in ? line.y1 : line.y0;
    return pull_inside(box, line, true, x, y);
}

int vg_clip(const _vgrect& box, const _vgrect& line, _vgrect& out) {
    _vgdrect part;
    if (!vg_clip(_vgdrect{box.x0, box.y0, box.x1, box.y1}, {line.x0, line.y0, line.x1, line.y1}, part))
        return 0;
    out = {static_cast<float>(part.x0), static_cast<float>(part.y0), static_cast<float>(part.x1),
           static_cast<float>(part.y1)};
    return 1;
}

} // namespace norva
