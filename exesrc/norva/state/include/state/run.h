#pragma once
// The shared scalars beside the run-state record, and the return of all of it to the state at start-up.

#include <string>

namespace norva {

extern int eoj;             // last step that exists in the journal, 0 when none does. Set by the journal
extern int managing;        // 1 while the journal replays steps; nothing is journaled meanwhile
extern int stsf;            // 1 when the selected window has exactly one time or exactly one frequency
extern int ntime, nfreq;    // nt and nf as asked for at the last reading of the fields
extern std::string homedir; // value of the environment name "QELM", or empty
extern int dec_ok;          // the preparation of a decimation has passed every check
extern float yx_scale;      // aspect of the image
extern double kw_r0;        // range offset of the raw file, keyword R0, shown on range profiles

// Open-window flags: each is set and cleared by its own window.
extern int imgwinon, rpwinon, dpwinon, pkswinon, mcwinon;
extern int kwinon;    // keyword window
extern int msgwinon;  // message window
extern int procwinon; // cut window

// One of the five analysis windows is open: file, window of data and journal position stay as they are.
bool analysis_window_open();

// Everything as at program start: user, gp, def and the scalars above.
void reset_run_state();

} // namespace norva
