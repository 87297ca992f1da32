#pragma once
// Displays: objects on a draw area, the palette, and the way from pixels back to plot inches.
//
// Objects of the overlay colour are drawn by exclusive-or: drawing one a second time restores every pixel.
// The rule for their owners: draw an overlay exactly once before it is removed, and remove it with the same
// vectors and the same display scale.

#include "port/port.h"
#include "vgph/vgph.h"

#include <cstdint>
#include <memory>
#include <span>

namespace norva {

struct _vgdisplay {
    port_win handle = 0;          // the draw area
    port_win dc = 0;              // where drawing calls go: the same area
    int invxy = 0;                // the picture is turned a quarter turn to the left
    float xpinch = 0, ypinch = 0; // pixels per plot inch, always equal
    int xorig = 0, yorig = 0;     // pixel of the plot origin
    int nx = 0, ny = 0;           // client size, pixels
    float xsize = 0, ysize = 0;   // plot size, inches
    int badscale = 1;             // the size is unusable and nothing is drawn
};
using vgdisplay_ptr = std::unique_ptr<_vgdisplay>;

// A display for a draw area, `xsize` by `ysize` plot inches. The first call of the process builds the
// palette.
vgdisplay_ptr vg_xw_init(port_win ww, float xsize, float ysize, int invxy);
// Moves a display to another draw area.
void vg_change_widget(_vgdisplay& disp, port_win ww, float xsize, float ysize, int invxy);
void vg_del_display(vgdisplay_ptr& disp);

// Reads the client size again and computes scale and origin: one scale for both axes, the origin in the
// lower left corner (with invxy the lower right), a margin left over on the right or at the top.
void vg_resize(_vgdisplay& disp, float xsize, float ysize, int invxy);

// Plot inches to the pixel, held to -32767 to 32766 so that far points bend a line instead of losing it.
port_point vg_to_pixel(const _vgdisplay& disp, float x, float y);
// Pixel to plot inches; 0, 0 with a bad scale.
void vg_xy_pos(const _vgdisplay& disp, int xpixel, int ypixel, float& xpos, float& ypos);

// Draw and remove. Nothing happens with an empty object or frame, an invisible object, a bad scale, or before
// the palette exists. Removing an ordinary object draws it over in the background colour; what lay under it
// is lost. Removing an overlay draws it once more.
void vg_render_object(const _vgdisplay& disp, const _vgobject* obj);
void vg_render_frame(const _vgdisplay& disp, const _vgframe* frame);
void vg_unrender_object(const _vgdisplay& disp, const _vgobject* obj);
void vg_unrender_frame(const _vgdisplay& disp, const _vgframe* frame);
// Erases the draw area.
void vg_clear(const _vgdisplay& disp);

// Pictures made of cells, for colour images, which are not kept as objects: w by h cells, row after row from
// the top, over the rectangle `box` (plot inches, corners in any order). Colours as in port.h. A span of the
// wrong size draws nothing.
void vg_render_cells(const _vgdisplay& disp, const _vgrect& box, std::span<const std::uint32_t> rgb, int w,
                     int h);

// --- Palette: 0 white (background), 1 black (foreground), 2 red, 3 blue, 4 green, 5 yellow, 6 purple, 7
// brown, 8 pink, 9 orange, 10 cyan, 11 magenta, 12 turquoise, 13 salmon, 14 gray, 15 overlay.

// Sets a logical colour for displays, and passes the values on to the paper's table (vghc_newcolor). The
// arguments work as switches: 1.0 is full, anything below is nothing. Colours outside 0 to 15 are ignored.
void vg_set_palette(int color, double r, double g, double b);
// Sets the overlay colour: what an overlay shows on the background.
void vg_set_overcolor(double r, double g, double b);
// The colour in use for an index of 0 to 19, red in the low byte; 0 for others and before the palette exists.
std::uint32_t vg_get_palette(int color);

} // namespace norva
