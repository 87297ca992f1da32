#pragma once
// The range profile window: forms the profiles of the current window of data, shows them as a stack, and
// offers the corrections that are read off the picture. Its plot controls are in profiles/plot_window.h.
//
// Throughout, a null `wo` is a call from inside the program (the journal's replay, other windows): it passes
// the gates that hold for the user's clicks.

namespace norva {

struct wi_obj;

// What the window asks of modules above it. The application fills this in at start, before the window is
// first opened. A button whose entry is null is not shown; "HELP" is shown when wi_hooks.help is set.
struct range_window_hooks {
    // "Peaks": opens the peak editor on range profiles (mode 1).
    void (*xpk_init)(int mode) = nullptr;
    // Redraws the peak editor, if that is up, after its data were compensated.
    void (*xpk_draw_init)() = nullptr;
    // "Downsize": user.nt0 and user.nt already hold the narrowed window, the arguments the old first samples
    // and row length. Cuts the data (get_gpf_data(1, nf0, nt0, nf)), brings user.t0 and user.dwell in step
    // and shows the main window's fields. The window then closes, unlocks the fields and journals the step. 0
    // when the data could not be cut, after a message.
    int (*downsize)(int nf0, int nt0, int nf) = nullptr;
};
extern range_window_hooks rp_hooks;

// Opens or refreshes the window. tag 1: journaled; 2: not journaled; 3: compute the profiles only.
void xrp(int tag);

// All actions, by tag:
//   0 dismiss           4, 5, 6 centre time up, down, typed       7 zoom   8 unzoom
//   10, 11, 12 time interval up, down, typed   13 remove drift    14 peaks 15 remove line  16 centre
//   18 hardcopy         100 ambiguity dialog   101 plot controls  130 remove ambiguities
//   -1 refresh with the full time span   -2 compute only   -3 first opening, not yet rendered
//   -4 a plot setting changed that needs recomputing       -5 a time field or a drawing setting changed
void xrp_cb(wi_obj* wo, int tag);

// The pointer in the picture: tag 0 a press, 1 a motion; xpx, ypx pixels; ibut 0 left, 1 middle, 2 right.
void xrp_mouse(wi_obj* wo, int tag, int xpx, int ypx, int ibut);

// Adds one correction to user.mc, applies it to user.pfdata, journals it and refreshes the window:
//   0 centre: x is the range, in gates, that moves to 0        1 remove drift: x is not used
//   2 remove line: x is its slope, in gates per record         3 remove ambiguities: their number is the
//                                                                dialog's, x is not used
// A correction that cannot be made is refused with a message and changes nothing.
void xrp_mocomp(int tag, double x);

// Greys the controls that ignore the user while the message window or the peak editor is up, and back. To be
// called when msgwinon or pkswinon has changed.
void xrp_refresh_controls();

// The window's top object; null before the first opening.
wi_obj* xrp_window();

// Forgets windows, profiles and hooks, as wi_reset_for_tests does with the objects.
void xrp_reset_for_tests();

// The strongest sample of user.rpdata: its range, in gates, and its record, counted from 1.
struct rp_gate {
    float range = 0;
    int record = 0;
    float power = 0;
};
// False when there are no profiles, or none of their samples is above 0.
bool strongest_range_gate(rp_gate& gate);

} // namespace norva
