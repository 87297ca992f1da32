#pragma once
// The profile plotting control window: what is shown of a stack of profiles and how. It serves one profile
// window at a time, whose handler gets the time and zoom controls as its own tags, and -4 (a setting that
// needs recomputing) or -5 (any other) after each change, so that the picture follows at once.

namespace norva {

struct wi_obj;

// Builds the window on first use; it is not shown yet.
void plotwin_init();

// Whose profiles the window controls: 1 the range, 2 the Doppler profile window. Takes over the increments of
// the user's defaults, and each setting whose default has changed since it was last looked at.
void set_deltas(int kind);

// 0 show, 1 hide, 15 read the interpolation field again; other tags belong to the window's own controls.
void plotwin_cb(wi_obj* wo, int tag);

// A setting has changed: has the profile stack drawn again. tag -4 or -5.
void pjplot(int tag);

// The settings, always finite and within their limits.
struct plot_settings {
    double interpolation = 1; // samples of a transform per sample of data, at least 1
    double height = 1;        // of the largest value shown, as in rp_picture
    double truncation = 1;    // fraction of the largest value at which curves are cut off
    int scaling = 0;          // 0 amplitude, 1 power
};
plot_settings plotwin_settings();
void plotwin_put_interpolation(double factor);

// The two time fields, seconds: "Time interval (sec):" and "Center time (sec):".
double plotwin_interval();
double plotwin_centre();
void plotwin_put_times(double interval, double centre);

// What the profile window hears now; what it would ignore is grey.
struct plot_readiness {
    bool heard = true;    // clicks at all
    bool picture = false; // there is one to act on
    bool zoom = false, unzoom = false;
};
void plotwin_refresh_controls(const plot_readiness& ready);

// The window's top object; null before plotwin_init.
wi_obj* plotwin_window();

} // namespace norva
