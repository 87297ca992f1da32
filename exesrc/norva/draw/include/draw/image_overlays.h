#pragma once
// What the image window lays over its picture. All places are in gates of the picture's data frame. The
// objects are overlays: drawing one a second time restores every pixel.

#include "vgph/vggph.h"
#include "vgph/vgxw.h"

namespace norva {

// Shows `next` in the place of the overlay in `shown`, which is removed first; either may be empty.
void put_overlay(const _vgdisplay& disp, vgobject_ptr& shown, vgobject_ptr next);

// Crosshair through a point, over the whole frame. Empty outside of it.
vgobject_ptr draw_vg_xhr(const _vgdataframe& df, double x, double y);

// The box with these two corners, which are held to the frame.
vgobject_ptr draw_vg_zmbox(const _vgdataframe& df, double xc1, double yc1, double xc2, double yc2);

// A cut: the line of length `wct` (gates) whose middle is the pivot xpv, ypv, at the angle `ang` (degrees,
// from the crossrange axis to the range axis), clipped to the frame. With wct 0 it is drawn from the pivot to
// the pointer at x, y, and wct and ang are set to those of the cut that ends there: wct to twice the
// distance.
vgobject_ptr draw_vg_cut(const _vgdataframe& df, double xpv, double ypv, float& wct, float& ang, double x,
                         double y);

// The readout beside the crosshair at x, y: range, crossrange, and the amplitude with its level in dB against
// `ref`. It stays within the display.
vgobject_ptr draw_vg_syms(const _vgdisplay& disp, const _vgdataframe& df, double x, double y,
                          double amplitude, double ref = 1);

// The line "last action: " to the right of the control box, in the place of the one in `vobj`, on the display
// too. tag 1: `mode` is an action of the image processor (0 to 10); tag 0: of the cut processor. Actions that
// have no name, and a restart or a step forward of a cut, leave the line as it is.
void draw_vg_mdesc(const _vgdisplay& disp, vgobject_ptr& vobj, int mode, int tag);

} // namespace norva
