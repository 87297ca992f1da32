// Displays: scale, palette, drawing and removing.

#include "line_run.h"
#include "output.h"
#include "vgph/vggph.h"
#include "vgph/vgxw.h"
#include "vgph/winplot.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace norva {

// --- Palette

namespace {
constexpr int xor_slot = 16, background_slot = 17, foreground_slot = 18, over_slot = 19, palette_size = 20;

struct color_levels {
    int r, g, b;
};
constexpr std::array<color_levels, 16> default_colors{{
    {255, 255, 255}, // white, the background
    {0, 0, 0},       // black, the foreground
    {255, 0, 0},     // red
    {0, 0, 255},     // blue
    {0, 255, 0},     // green
    {255, 255, 0},   // yellow
    {128, 0, 128},   // purple
    {128, 64, 0},    // brown
    {255, 102, 255}, // pink
    {255, 128, 0},   // orange
    {0, 255, 255},   // cyan
    {255, 0, 255},   // magenta
    {0, 128, 192},   // turquoise
    {255, 128, 128}, // salmon
    {192, 192, 192}, // gray
    {0, 0, 0},       // overlay, until vg_set_overcolor
}};

// One for all displays, built by the first vg_xw_init and kept for the life of the process.
struct {
    bool built = false;
    std::array<std::uint32_t, palette_size> rgb{};
} palette;
} // namespace

static std::uint32_t rgb_word(int r, int g, int b) {
    return static_cast<std::uint32_t>(r) | static_cast<std::uint32_t>(g) << 8 |
           static_cast<std::uint32_t>(b) << 16;
}

static void build_palette() {
    for (int i = 0; i < 16; i++) {
        const auto [r, g, b] = default_colors[i];
        palette.rgb[i] = rgb_word(r, g, b);
        vghc_newcolor(i, r / 255.0, g / 255.0, b / 255.0);
    }
    palette.rgb[background_slot] = palette.rgb[0];
    palette.rgb[foreground_slot] = palette.rgb[1];
    palette.rgb[over_slot] = palette.rgb[6];
    palette.built = true;
}

void vg_set_palette(int color, double r, double g, double b) {
    if (!palette.built || color < 0 || color > 15) return;
    palette.rgb[color] = switch_color(r, g, b);
    vghc_newcolor(color, r, g, b);
}

void vg_set_overcolor(double r, double g, double b) {
    if (!palette.built) return;
    vg_set_palette(vg_overlay_color, r, g, b);
    palette.rgb[over_slot] = palette.rgb[vg_overlay_color];
}

std::uint32_t vg_get_palette(int color) {
    return palette.built && color >= 0 && color < palette_size ? palette.rgb[color] : 0;
}

// --- Scale

vgdisplay_ptr vg_xw_init(port_win ww, float xsize, float ysize, int invxy) {
    if (!palette.built) build_palette();
    auto disp = std::make_unique<_vgdisplay>();
    vg_change_widget(*disp, ww, xsize, ysize, invxy);
    return disp;
}

void vg_change_widget(_vgdisplay& disp, port_win ww, float xsize, float ysize, int invxy) {
    disp.handle = disp.dc = ww;
    vg_resize(disp, xsize, ysize, invxy);
}

void vg_del_display(vgdisplay_ptr& disp) {
    disp.reset();
}

void vg_resize(_vgdisplay& disp, float xsize, float ysize, int invxy) {
    const port_rect area = the_port().client_rect(disp.handle);
    disp.nx = area.w;
    disp.ny = area.h;
    disp.xsize = xsize;
    disp.ysize = ysize;
    disp.invxy = invxy;
    disp.badscale = !(xsize > 0 && ysize > 0);
    const float nx = static_cast<float>(disp.nx), ny = static_cast<float>(disp.ny);
    if (!disp.badscale)
        disp.xpinch = invxy ? std::min(ny / xsize, nx / ysize) : std::min(nx / xsize, ny / ysize);
    disp.ypinch = disp.xpinch;
    disp.xorig = invxy ? disp.nx - 1 : 0;
    disp.yorig = disp.ny - 1;
}

static int held_pixel(float v) {
    if (!(v > -32767.0f)) return -32767; // also what is no number
    return static_cast<int>(std::min(v, 32766.0f));
}

port_point vg_to_pixel(const _vgdisplay& disp, float x, float y) {
    const float p = disp.xpinch, xorig = static_cast<float>(disp.xorig),
                yorig = static_cast<float>(disp.yorig);
    if (disp.invxy) return {held_pixel(xorig - p * y), held_pixel(yorig - p * x)};
    return {held_pixel(xorig + p * x), held_pixel(yorig - p * y)};
}

void vg_xy_pos(const _vgdisplay& disp, int xpixel, int ypixel, float& xpos, float& ypos) {
    xpos = ypos = 0;
    if (disp.badscale || !(disp.xpinch > 0)) return;
    const float right =
        static_cast<float>(disp.invxy ? disp.xorig - xpixel : xpixel - disp.xorig) / disp.xpinch;
    const float up = static_cast<float>(disp.yorig - ypixel) / disp.xpinch;
    xpos = disp.invxy ? up : right;
    ypos = disp.invxy ? right : up;
}

// --- Drawing

static void vg_xw_render_vec(const _vgdisplay& disp, std::span<const _vgvec> vec) {
    line_run run(disp.dc);
    for (const _vgvec& v : vec) {
        const port_point p = vg_to_pixel(disp, v.x, v.y);
        v.pen == vg_pen_move ? run.move(p) : run.draw(p);
    }
}

static void vg_xw_render_obj(const _vgdisplay& disp, const _vgobject& obj) {
    vg_walk(obj, [&disp](std::span<const _vgvec> vec) { vg_xw_render_vec(disp, vec); });
}

static void vg_setline_stuff(const _vgdisplay& disp, const _vgobject& obj, int slot) {
    the_port().pen(disp.dc, palette.rgb[slot], obj.linetype, std::max(1, obj.linethick - 1));
}

// An overlay is drawn in the colour that turns the background into the overlay colour, and back. Others are
// drawn in `slot`.
static void draw_object(const _vgdisplay& disp, const _vgobject* obj, int slot) {
    if (!palette.built || !obj || !obj->visible || disp.badscale) return;
    if (obj->color < vg_overlay_color) {
        vg_setline_stuff(disp, *obj, std::clamp(slot, 0, vg_overlay_color));
        vg_xw_render_obj(disp, *obj);
        return;
    }
    palette.rgb[xor_slot] = (palette.rgb[over_slot] ^ palette.rgb[background_slot]) & 0xffffff;
    vg_setline_stuff(disp, *obj, xor_slot);
    the_port().rop(disp.dc, port_rop::exclusive_or);
    vg_xw_render_obj(disp, *obj);
    the_port().rop(disp.dc, port_rop::copy);
}

void vg_render_object(const _vgdisplay& disp, const _vgobject* obj) {
    draw_object(disp, obj, obj ? obj->color : 0);
}

void vg_render_frame(const _vgdisplay& disp, const _vgframe* frame) {
    if (!frame) return;
    for (const vgobject_ptr& obj : frame->objptr) vg_render_object(disp, obj.get());
}

void vg_unrender_object(const _vgdisplay& disp, const _vgobject* obj) {
    draw_object(disp, obj, 0);
}

void vg_unrender_frame(const _vgdisplay& disp, const _vgframe* frame) {
    if (!frame) return;
    for (const vgobject_ptr& obj : frame->objptr) vg_unrender_object(disp, obj.get());
}

void vg_clear(const _vgdisplay& disp) {
    the_port().erase(disp.dc, the_port().client_rect(disp.dc));
}

void vg_render_cells(const _vgdisplay& disp, const _vgrect& box, std::span<const std::uint32_t> rgb, int w,
                     int h) {
    if (disp.badscale) return;
    draw_cells(disp.dc, vg_to_pixel(disp, box.x0, box.y0), vg_to_pixel(disp, box.x1, box.y1), disp.invxy != 0,
               rgb, w, h);
}

} // namespace norva
