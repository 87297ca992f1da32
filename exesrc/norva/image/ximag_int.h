#pragma once
// Shared by the files of the image window: its state, and what they call of each other.
//
//   ximag.cpp          opening, closing, the buttons   ximag_panel.cpp    the window and its controls
//   ximag_fields.cpp   fields of the panel             ximag_scaling.cpp  the three scaling windows
//   ximag_mouse.cpp    the pointer in the picture      ximag_twopt.cpp    the end points of a cut
//   ximag_picture.cpp  drawing, overlays, hardcopy     pi_apply.cpp       one action, from block to picture
//   image_steps.cpp    what is kept beside the processor's stored actions

#include "image/ximag.h"
#include "image_steps.h"
#include "vgph/vggph.h"
#include "vgph/vgxw.h"

#include <string>

namespace norva {

constexpr int MOUSE_PRESS = 0, MOUSE_MOTION = 1;
constexpr int LEFT_BUTTON = 0, MIDDLE_BUTTON = 1, RIGHT_BUTTON = 2;

// Modes that are no actions of the processor, and tags of buttons.
constexpr int XI_FLOP_V = 10, XI_ZOOM = 400, XI_UNZOOM = 401, XI_BACK = 100, XI_HELP = 101;
constexpr int XI_AXIS_UP = 600, XI_AXIS_DOWN = 601, XI_AXIS_TYPED = 602;

// Field tags of this window's own, beside those told in ximag.h.
constexpr int XI_XPV_UP = 20, XI_XPV_DOWN = 21, XI_YPV_UP = 22, XI_YPV_DOWN = 23, XI_FACTOR = 24;

struct ximag_state {
    proimag_parms pip;
    bool init = false;    // the block has taken its defaults
    int image_mode = 0;   // action the image stands at, whatever is armed
    int named_mode = 0;   // the last of these that has made a picture
    int last_mode = 0;    // armed action that a click worked on last
    int nclick = 0;       // clicks of a box or cut: 1 corner set, 2 complete
    int freemv = 0;       // 1 while the crosshair follows the pointer
    int center_mode = -1; // kflop of Center Image: 1 snap to the peak, 0 the exact point
    int playback = 0;     // 1 while the main journal drives the window
    bool changed = false; // a step was made since the opening
    float hclip = 1;      // high amplitude threshold of the peak scaling
    image_steps steps;

    vgdisplay_ptr disp;
    vgframe_ptr cbox;
    vgobject_ptr mdesc;          // last action line
    vgobject_ptr xhr, syms;      // crosshair and readout, at:
    double xhr_x = 0, xhr_y = 0; // gates
    double xhr_amplitude = 0;
    vgobject_ptr zmbox; // box, with the corners:
    double bx0 = 0, by0 = 0, bx1 = 0, by1 = 0;
    vgobject_ptr cut; // from xpv, ypv; the pointer's place while it is drawn
    double cut_x = 0, cut_y = 0;
};
extern ximag_state xi;

bool cut_window_stands(); // the one switch for all that belongs to cuts
bool ximag_heard();       // neither message nor cut window is up
double image_x2();        // place of the last sample, gates
double image_y2();

// --- ximag.cpp
void xi_close_window(); // with its sub-windows, picture and overlays; nothing is stored
void xi_arm(int mode);  // the mode's button and hint; what is laid over the picture for other modes goes

// --- ximag_picture.cpp
void ximag_render();             // erases, and draws what there is
void ximag_resize(wi_obj*, int); // picture and overlays for the size that the draw area has now
void show_image_again();         // IMG_REDRAW and render
void xi_show_crosshair(double x, double y, double amplitude);
void xi_show_box();
void xi_show_cut(double x, double y); // the pointer counts while wct is 0
void xi_drop_crosshair();             // the readout too
void xi_drop_readout();
void xi_drop_box();
void xi_drop_cut();
void xi_drop_picture();

// --- ximag_panel.cpp
void ximag_init();       // builds the window, once
void ximag_reset_mbut(); // buttons and hint follow pip.mode
void ximag_show_style(); // check marks of "Image type"
double axis_scaling_field();
void put_axis_scaling_field(double v);
void panel_reset();

struct panel_fields {
    wi_obj *wct = nullptr, *dct = nullptr, *xpv = nullptr, *ypv = nullptr,
           *ang = nullptr; // null without cuts
    wi_obj *xc1 = nullptr, *xc2 = nullptr, *yc1 = nullptr, *yc2 = nullptr;
    wi_obj *ifx = nullptr, *ify = nullptr;
};
panel_fields& ximag_fields();

// --- ximag_fields.cpp
void ximag_getvals();          // reads the fields that belong to pip.mode
void ximag_putvals(int level); // see the routine
void ximag_reset_flds();       // the fields as for a new image
void whole_image_box();        // corners of the edit: the whole image

// --- ximag_scaling.cpp
void pswin_init(wi_obj* obj, int tag); // opens the scaling window of the display type
void style_cb(wi_obj* obj, int tag);
void take_picture_scaling(); // what the contour and colour windows hold, for the picture
void read_peak_scaling();
void put_peak_scaling();
void step_dot_scaling(int by);
void step_peaks(int direction);
void close_peak_scaling();
void close_scaling_windows();
bool peak_scaling_up();
void scaling_reset();
void scaling_refresh();

// --- ximag_twopt.cpp
void twopt_init(wi_obj* obj, int tag);
void twopt_close();
void twopt_put(); // end points of the block into the fields
void twopt_get(); // and back, with pivot, length and angle
void twopt_reset();

} // namespace norva
