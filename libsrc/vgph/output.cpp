// The walk over an object, and cells. See output.h.

#include "output.h"

#include "vgph/vggph.h"
#include "vgph/vgsym.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace norva {

void vg_walk(const _vgobject& obj, const std::function<void(std::span<const _vgvec>)>& out) {
    if (!obj.extended) return out(obj.veclst);

    // Strokes are never cut here: the buffer goes out before a move.
    constexpr std::size_t enough = 500;
    std::vector<_vgvec> buf;
    buf.reserve(2 * enough);
    float x = 0, y = 0;
    _vgrect clip{0, 0, 1, 1};
    for (const _vgvec& v : obj.veclst) {
        if (v.pen != vg_pen_draw && buf.size() >= enough) {
            out(buf);
            buf.clear();
        }
        _vgrect box = clip;
        vg_norm_rect(box);
        switch (v.pen) {
        case vg_pen_move:
        case vg_pen_draw:
            buf.push_back(v);
            x = v.x;
            y = v.y;
            continue;
        case vg_pen_clip_low:
            clip.x0 = v.x;
            clip.y0 = v.y;
            continue;
        case vg_pen_clip_high:
            clip.x1 = v.x;
            clip.y1 = v.y;
            continue;
        case vg_pen_circle: vg_vecgen_circle(x, y, v.x, buf); break;
        case vg_pen_spot: vg_vecgen_spot(x, y, v.x, buf); break;
        case vg_pen_circle_clip: vg_vecgen_circle_clip(x, y, v.x, box, buf); break;
        case vg_pen_spot_clip: vg_vecgen_spot_clip(x, y, v.x, box, buf); break;
        default: continue;
        }
        buf.push_back({vg_pen_move, x, y});
    }
    if (!buf.empty()) out(buf);
}

// The right column becomes the top row.
static std::vector<std::uint32_t> turn_cells(std::span<const std::uint32_t> rgb, int w, int h) {
    std::vector<std::uint32_t> out(rgb.size());
    for (int row = 0; row < h; row++)
        for (int col = 0; col < w; col++)
            out[static_cast<std::size_t>(w - 1 - col) * h + row] =
                rgb[static_cast<std::size_t>(row) * w + col];
    return out;
}

void draw_cells(port_win dc, port_point corner1, port_point corner2, bool turned,
                std::span<const std::uint32_t> rgb, int w, int h) {
    if (w < 1 || h < 1 || rgb.size() != static_cast<std::size_t>(w) * static_cast<std::size_t>(h)) return;
    const port_rect to{std::min(corner1.x, corner2.x), std::min(corner1.y, corner2.y),
                       std::max(1, std::abs(corner1.x - corner2.x)),
                       std::max(1, std::abs(corner1.y - corner2.y))};
    if (turned)
        the_port().image(dc, to, turn_cells(rgb, w, h), h, w);
    else
        the_port().image(dc, to, rgb, w, h);
}

std::uint32_t switch_color(double r, double g, double b) {
    return (r >= 1 ? 0xffu : 0u) | (g >= 1 ? 0xff00u : 0u) | (b >= 1 ? 0xff0000u : 0u);
}

} // namespace norva
