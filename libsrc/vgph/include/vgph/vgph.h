#pragma once
// Pictures as pen vectors: objects, and frames of objects. An object is a list of pen-up and pen-down
// vectors in plot inches (x to the right, y upward) with one colour, line type and thickness; it can be drawn
// on a display (vgph/vgxw.h) or on paper (vgph/winplot.h). Nothing here knows of pixels.
// Axes and curves are in vgph/vggph.h, text, circles and spots in vgph/vgsym.h.

#include <memory>
#include <vector>

namespace norva {

// What a vector does; `x` and `y` of _vgvec mean what is said here.
constexpr int vg_pen_move = 0;        // move to x, y
constexpr int vg_pen_draw = 1;        // draw to x, y
constexpr int vg_pen_clip_low = 2;    // lower left corner of the clip box
constexpr int vg_pen_clip_high = 3;   // upper right corner of the clip box
constexpr int vg_pen_circle = 4;      // circle of radius x around the current position
constexpr int vg_pen_spot = 5;        // filled spot of radius x around the current position
constexpr int vg_pen_circle_clip = 6; // the circle, clipped to the clip box
constexpr int vg_pen_spot_clip = 7;   // the spot, clipped to the clip box

// The current position is that of the last move or draw. The clip box of an object starts as 0, 0 to 1, 1.
struct _vgvec {
    int pen = 0;
    float x = 0, y = 0;
};

constexpr int vg_overlay_color = 15; // drawn by exclusive-or on a display

struct _vgobject {
    int visible = 1;            // drawn only when non-zero
    int color = 1;              // palette index 0 to 15
    int linetype = 0;           // dash pattern 0 to 9
    int linethick = 0;          // 0 or 1: thinnest pen; n: pen width n - 1
    int extended = 0;           // non-zero when a pen code above 1 is present
    std::vector<_vgvec> veclst; // its size and capacity are the vectors in use and allocated
};
using vgobject_ptr = std::unique_ptr<_vgobject>;

struct _vgrect {
    float x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

struct _vgdrect {
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

// --- Objects

vgobject_ptr vg_new_object();
// Frees the object with its vectors; `obj` is empty afterwards.
void vg_del_object(vgobject_ptr& obj);

// Appends one vector of any pen code.
void vg_plot_obj(_vgobject& obj, float x, float y, int pen);
// Appends a draw (pendown not 0) or a move.
void vg_plot_object(_vgobject& obj, float x, float y, int pendown);
// Sets the attributes; `color` is held to 0 to 15.
void vg_attr_object(_vgobject& obj, int color, int linetype, int linethick);

// x becomes x*xfact + xmove, y becomes y*yfact + ymove. A radius is multiplied by xfact alone, so that a
// circle stays round under different factors.
void vg_scale_object(_vgobject& obj, float xfact, float yfact, float xmove, float ymove);
// Shifts all positions and leaves radii alone.
void vg_move_object(_vgobject& obj, float xmove, float ymove);
// Appends the vectors of `obj2` to `obj1` and frees `obj2`. An empty `obj2` changes nothing.
void vg_merge_object(_vgobject& obj1, vgobject_ptr obj2);

// Bounding box over the x and y of all vectors, radii taken as if they were points; all 0 without vectors.
void vg_obj_extent(const _vgobject& obj, float& x0, float& y0, float& x1, float& y1);
// Adds a closed box that stands `gap` outside the extent.
void vg_box_obj(_vgobject& obj, float gap);

// --- Frames: a list of objects, drawn in order. The frame owns them.

struct _vgframe {
    std::vector<vgobject_ptr> objptr;
};
using vgframe_ptr = std::unique_ptr<_vgframe>;

vgframe_ptr vg_new_frame();
// Deletes the objects and the frame; `frame` is empty afterwards.
void vg_del_frame(vgframe_ptr& frame);

// The frame takes the object; the answer names it for later calls. An empty object is not added.
_vgobject* vg_add_object(_vgframe& frame, vgobject_ptr obj);
// Takes the object out, order kept, and hands it back; empty when it is not in the frame.
vgobject_ptr vg_remove_object(_vgframe& frame, const _vgobject* obj);

} // namespace norva
