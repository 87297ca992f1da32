#pragma once
// What every analysis window lays over or beside its picture: the control box, a line through a point, the
// header of a hardcopy.

#include "vgph/vggph.h"
#include "vgph/vgxw.h"
#include "vgph/winplot.h"

#include <string>
#include <string_view>

namespace norva {

// The control box: def.cbox_xsz by def.cbox_ysz plot inches at the top left of the display, holding `num`,
// whose last two digits stand apart from the others. It takes the place of the frame in `box`. A number
// outside 0 to 999999 gives "ERROR: bad num in draw_cbox()" and leaves the box as it is.
void draw_vg_cbox(const _vgdisplay& disp, vgframe_ptr& box, int num);

// The point (plot inches) lies in the control box.
bool in_cbox(const _vgdisplay& disp, float x, float y);

// Digits of the control box: {"07"}, {"12", "03"}, {"0123", "04"}; the second text is empty up to 99.
struct cbox_digits {
    std::string front, last;
};
cbox_digits split_cbox_number(int num);

// The straight line through the point (x, y) of a data frame at the angle `ang`, in degrees from the x axis,
// all in data units, cut to the frame. An overlay: it is drawn once to show it and once more to remove it.
// Empty when nothing of it lies in the frame.
vgobject_ptr draw_vg_line(const _vgdataframe& df, double x, double y, double ang);

// "Journal File: " and the name, at x, y (plot inches) of a hardcopy.
void hc_hdr(_vghardcopy& hc, float x, float y, std::string_view jfile);

// A text whose lower end is centred on x.
void add_centred_text(_vgobject& obj, float x, float y, float height, std::string_view text);

} // namespace norva
