#pragma once
// Shared by the files of the Doppler profile window: its state, and what they call of each other.
//
//   doppler_window.cpp    the window, xdp, xdp_ok, xdp_cb   doppler_picture.cpp   drawing, hardcopy
//   doppler_compute.cpp   profiles, zoom                    doppler_mouse.cpp     pointer
//   doppler_mocomp.cpp    corrections

#include "profiles/doppler_window.h"
#include "profiles/draw_vg_dp.h"
#include "time_span.h"
#include "zuvsys/jbuf.h"

#include <string>

namespace norva {

constexpr int DP_MODE_NONE = 0, DP_MODE_CENTER = 1;
constexpr int DP_MOST_WDW = 512, DP_MOST_IFACT = 16;

struct doppler_state {
    jbuf<float> rpcut;    // the signal at range 0, nt complex samples; belongs to the profiles
    int nt = 0;           // records it was taken from; 0: none
    double dt = 0;        // seconds between the rows of user.dpdata
    int ni = 0, ip = 0;   // window and interpolation factor that user.dpdata was formed with
    int nf = 0;           // samples of its rows
    float d1 = 0, dd = 0; // Doppler of the first sample and spacing, gates
    bool power = false;   // it holds the square of the power
    int izoom = 0;        // zoom steps in force
    time_span span;       // displayed

    bool okset = false;        // the parameters were accepted: there are profiles
    int m_mode = DP_MODE_NONE; // what a press in the picture does
    double x = 0;              // Doppler position pressed last, gates

    vgdisplay_ptr disp;
    dp_picture picture;
    vgframe_ptr box;
};
extern doppler_state dp;

record_times doppler_rows(); // of user.dpdata
bool have_doppler();         // it belongs to the current window of data

// --- doppler_compute.cpp
void clamp_parameters(int& wdw, int& ifact, int& lag);
// Profiles by user.dp_ni, dp_ip and dp_lag, which are brought within their limits, at no zoom. False after a
// message; there are no profiles then.
bool compute_doppler();
bool doppler_can_zoom();  // the extent can be halved once more
void doppler_zoom_once(); // halves the extent about Doppler 0; nothing at the limit
void doppler_zoom_again(int n);

// --- doppler_picture.cpp
void build_doppler();           // new picture, with the span corrected and the fields refreshed
void render_doppler();          // erases, and draws what there is
std::string doppler_hardcopy(); // as range_hardcopy
void drop_doppler();            // forgets the picture

// --- doppler_window.cpp
void doppler_take_fields(); // into user.dp_ni, dp_ip, dp_lag, within their limits
void doppler_downsize();    // narrows the window of data to the displayed time span, and leaves

} // namespace norva
