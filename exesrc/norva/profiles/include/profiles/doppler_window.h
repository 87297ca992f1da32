#pragma once
// The Doppler profile window: spectra of the signal at range 0 in a window that slides along the records,
// shown as a stack, and the corrections that are read off the picture. It opens empty and computes nothing
// before "INITIALIZE". Its plot controls are in profiles/plot_window.h.
//
// Throughout, a null `wo` is a call from inside the program (the journal's replay, other windows): it passes
// the gates that hold for the user's clicks.

namespace norva {

struct wi_obj;

// What the window asks of modules above it. The application fills this in at start, before the window is
// first opened. A button whose entry is null is not shown; "HELP" is shown when wi_hooks.help is set, and
// "Downsize" in the plot controls when range_window_hooks has it.
struct doppler_window_hooks {
    // "Peaks": opens the peak editor on Doppler profiles (mode 2).
    void (*xpk_init)(int mode) = nullptr;
};
extern doppler_window_hooks dp_hooks;

// Opens the window, or empties it. Journaled.
void xdp();

// The parameters, by tag:
//   0 "INITIALIZE": takes the three fields, computes and shows. A null wo takes user.dp_ni, dp_ip, dp_lag.
//   1, 2, 3 WDW up, down, typed   4, 5, 6 IFACT doubled, halved, typed   7, 8, 9 LAG up, down, typed
void xdp_ok(wi_obj* wo, int tag);

// All other actions, by tag. Positive tags do nothing before the profiles are initialised.
//   0 dismiss   1 hardcopy   4, 5, 6 centre time up, down, typed   7 zoom   8 unzoom
//   10, 11, 12 time interval up, down, typed   13 remove drift   14 peaks   15 centre
//   -1 refresh with the full time span: takes the fields; during a replay user.dp_ni, dp_ip, dp_lag
//   -2 compute only    -3 after "INITIALIZE": takes the fields, not yet rendered
//   -4 a plot setting changed that needs recomputing   -5 a time field or a drawing setting changed
void xdp_cb(wi_obj* wo, int tag);

// The pointer in the picture: tag 0 a press, 1 a motion; xpx, ypx pixels; ibut 0 left, 1 middle, 2 right.
void xdp_mouse(wi_obj* wo, int tag, int xpx, int ypx, int ibut);

// Adds one correction to user.mc, applies it to user.pfdata, journals it and refreshes the window:
//   0 centre: the Doppler position pressed last moves to 0        1 remove drift: the Doppler rate
// A correction that cannot be made is refused with a message and changes nothing.
void xdp_mocomp(int tag);

// Greys the controls that ignore the user while the message window or the peak editor is up, and back. To be
// called when msgwinon or pkswinon has changed.
void xdp_refresh_controls();

// The window shows profiles; not so between its opening and "INITIALIZE".
bool xdp_initialized();

// The window's top object; null before the first opening.
wi_obj* xdp_window();

// Forgets windows, profiles and hooks. Part of the state is shared with the range profile window:
// xrp_reset_for_tests belongs with it.
void xdp_reset_for_tests();

// The strongest sample of user.dpdata: its Doppler, in gates, and its row, counted from 1.
struct dp_gate {
    float doppler = 0;
    int row = 0;
    float power = 0; // squared when the scaling is "power"
};
// False when there are no profiles, or none of their samples is above 0.
bool strongest_doppler_gate(dp_gate& gate);

// What a pressed point of the picture means for "Center": the Doppler position, in gates, that xdp_mocomp(0)
// moves to 0. For callers without a pointer.
void xdp_set_position(double x);

} // namespace norva
