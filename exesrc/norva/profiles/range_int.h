#pragma once
// Shared by the files of the range profile window: its state, and what they call of each other.
//
//   range_window.cpp    the window, xrp, xrp_cb       range_picture.cpp   drawing, hardcopy
//   range_compute.cpp   profiles, zoom                range_mouse.cpp     pointer, drawn line
//   range_mocomp.cpp    corrections                   ambs_dialog.cpp     number of Doppler ambiguities

#include "profiles/draw_vg_rp.h"
#include "profiles/range_window.h"
#include "time_span.h"
#include "zuvsys/jbuf.h"

#include <string>

namespace norva {

constexpr int MODE_NONE = -1, MODE_CENTER = 0, MODE_LINE = 1;

struct range_state {
    jbuf<float> rpdata_cplx; // complex profiles, nt rows of 2*nr floats, never zoomed
    int nf = 0, nt = 0;      // data that user.rpdata was formed from; 0: none
    double factor = 1;       // interpolation it was formed with
    float r1 = 0, dr = 0;    // range of the first gate and spacing of user.rpdata, gates
    int izoom = 0;           // zoom steps in force
    time_span span;          // displayed

    int m_mode = MODE_NONE;  // what a press in the picture does
    int nclick = 0;          // points of the line that have been set
    double xpv = 0, ypv = 0; // the first: gates, seconds
    double ang = 0;          // direction of the drawn line, degrees, in data units
    double dft = 0;          // its slope, gates per record
    double dft_off = 0;      // its range at time 0, were the slope one per second
    vgobject_ptr line;       // the drawn line, on the display exactly once

    vgdisplay_ptr disp;
    rp_picture picture;
    vgframe_ptr box;
};
extern range_state rp;

record_times range_records(); // of the current window of data
bool have_profiles();         // user.rpdata belongs to the current window of data

// --- range_compute.cpp
bool compute_profiles();   // false after a message: too many gates; the old profiles stay, if they still fit
void restore_full_range(); // ends the zoom: user.rpdata as computed last
bool can_zoom();           // the extent can be halved once more
void zoom_once();          // halves the extent about the middle; nothing at the limit
void zoom_again(int n);

// --- range_picture.cpp
void redraw();                // new picture of the profiles, with the span corrected and the fields refreshed
void build_picture();         // the same without drawing it on the display
void render();                // erases, and draws what there is
std::string range_hardcopy(); // the picture on paper; the file it went to, empty when to a printer or nowhere
void drop_picture();

// --- range_mouse.cpp
void remove_line();  // also forgets its points
void rebuild_line(); // after the picture changed its size

// --- range_mocomp.cpp
std::string correction_refused(int tag); // why a correction cannot be made now; empty when it can

// --- range_window.cpp
void range_downsize();     // narrows the window of data to the displayed time span, and leaves
bool range_can_downsize(); // the application offers it

// --- ambs_dialog.cpp
void rawin_init(wi_obj* wo, int on); // shows (1) or hides (0) the dialog
double rawin_value();
void ambs_dialog_refresh(); // grey while clicks are ignored
void ambs_dialog_reset();

// --- plot_window.cpp
void plotwin_reset();

} // namespace norva
