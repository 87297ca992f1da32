#pragma once
// The image window: shows the image of the current window of data as peaks, contours or a colour map, and
// turns buttons, fields and clicks into actions of the image processor (image/proimag.h). All places are in
// gates.
//
// Throughout, a null `wo` or `obj` is a call from inside the program (the journal's replay, other windows):
// it passes the gates that hold for the user's clicks.

#include "image/proimag.h"

#include <string>
#include <vector>

namespace norva {

struct wi_obj;
struct plr_kws;

// What the window hands to the cut window.
struct cut_request {
    int mode = 0;         // 0: a cut of the image; 30: data of one dimension
    int lw = 1;           // weighting
    int kc = 0;           // class of the cut; of one-dimensional data 2*ksy along frequency, ksx along time
    int n = 0;            // samples
    float c1 = 0, dc = 0; // place of the first, spacing
    std::vector<float> data; // 2*n floats, interleaved
};

// What the image window asks of modules above it. The application fills this in at start, before the window
// is first opened.
struct image_window_hooks {
    // Opens the cut window. While this is null there is none: "Compute Cut", its fields and "End Points" are
    // not shown, and one-dimensional data are refused with a message.
    void (*xproc)(const cut_request& cut) = nullptr;
    // The polar format window. While it is up, images are polar formatted; it goes with the image's window.
    // All null: there is none.
    int (*polar_up)() = nullptr;
    void (*polar_off)() = nullptr;
    plr_kws* (*geometry)() = nullptr;
};
extern image_window_hooks xi_hooks;

// Opens the window on user.pfdata: forms the image (polar formatted while the polar format window is on), and
// restores the stored actions of jary, when the journal holds some, without doing them. When the window does
// not open, after a message, the main window's fields are unlocked again.
void ximag();

// All actions, by tag:
//   1 flop across   10 flop along range   3 peak scaling, applied   5 interpolate   11 hand over for "WRITE"
//   4, 6, 8, 9, 400 arm: edit, peak parameters, cut, centre, zoom: a click in the picture does it
//   19 dismiss      18 the cut window has closed    100 a step back     401 unzoom    402 hardcopy
//   600, 601, 602 axis scaling up, down, typed
void ximag_bttn(wi_obj* obj, int tag);
constexpr int XI_HARDCOPY = 402;

// The numeric fields of the panel and of the peak scaling window:
//   3, 4 scaling of the dots up, down    10, 11 number of peaks up, down    5, 6 interpolation factor up,
//   down 7, 8 cut angle up, down    13, 14 cut length up, down    9 a cut field typed    12 an edit field
//   typed
void ximag_fld_cb(wi_obj* obj, int tag);

// The pointer in the picture: tag 0 a press, 1 a motion; xpx, ypx pixels; ibut 0 left, 1 middle, 2 right.
void ximag_mouse(wi_obj* wo, int tag, int xpx, int ypx, int ibut);

// A press in the control box: 0 left a step of the image forward, 1 middle one back, 2 right to the start of
// the image. Beyond the image's own steps the window closes and the journal goes on.
constexpr int IMAGE_STEP_FORWARD = 0, IMAGE_STEP_BACK = 1, IMAGE_STEP_START = 2;
void ximag_step(int ibut);

// Performs the action of pip->mode: packs it, runs the processor, shows its message or its result, and takes
// over what it says about the image. False when the action was refused; mode is then what it was before.
bool pi_apply(proimag_parms* pip);

// Close the window without keeping its steps: kill_ximag after a failure, ximag_leave since the journal goes
// elsewhere.
void kill_ximag();
void ximag_leave();

// For the cut window. ximag_newcut: wct, dct, xpv, ypv, ang of the next cut, which is shown; without values
// the present one is shown again.
void ximag_newcut(const float* values);
float ximag_ang();
int ximag_twopt_status(); // 1 while "End Points" is up
void ximag_enable_flds(int flag);
// Brings an angle into the half turn that cuts are shown in; 1 when it was turned around by 180 degrees.
int ximag_new_ang(proimag_parms* parms);

// The picture on paper; the file it went to, empty when to a printer or nowhere.
std::string ximag_hc();

// A raw file was opened: the axis scaling is 1 again, and the next image takes the user's defaults.
void ximag_new_file();

// Greys the controls that ignore the user while the message window or the cut window is up, and back. To be
// called when msgwinon or procwinon has changed.
void ximag_refresh_controls();

// The window's top object; null before the first opening.
wi_obj* ximag_window();

// Step of the image that is shown, 0 as formed, and the name of its action.
int ximag_count();
std::string ximag_action();

// The strongest sample of the image: its place in gates and its amplitude.
struct image_gate {
    float crossrange = 0, range = 0, amplitude = 0;
};
// False when there is no image, or none of its samples is above 0.
bool strongest_image_gate(image_gate& gate);

// Forgets windows, image and hooks, as wi_reset_for_tests does with the objects.
void ximag_reset_for_tests();

} // namespace norva
