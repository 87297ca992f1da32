#pragma once
// The window of data: how its two forms (units, samples) follow each other, and which windows are accepted.
// Arithmetic on the run state alone; the main window reads and shows the fields.

namespace norva {

// Brings user.f0, bw, t0, dwell and user.nf0, nf, nt0, nt in step. flag 0: the units are the source of the
// samples, other values: the samples stand. The units are then recomputed from the samples. While no data
// are loaded, user.df and user.dt are first taken from the raw file.
//
// For descending frequencies a window typed in units only ever starts at the first sample: the sign in the
// formula of nf0 turns against the step's own. Windows given in samples are exact for both directions.
void cvrt_user_vals(int flag);

// First frequency (MHz) of the window whose first sample is nf0, in the steps of the data in memory.
float window_f0(int nf0);

// The data are the raw file's again: its steps, and its first sample as the origin of all windows.
void take_raw_steps();

// The data of the window have been decimated to mf by mt samples: the window keeps its span and its first
// frequency and time, the steps grow, and later windows are told in the new samples, counted on from nf0 and
// nt0. Sets user.nf, nt, df, dt.
void take_decimated_steps(int mf, int mt);

enum class window_verdict { ok, one_point, f0_outside, t0_outside, nf_outside, nt_outside };

// A window in samples.
struct data_window {
    int nf0 = 1, nf = 0, nt0 = 1, nt = 0;
    bool operator==(const data_window&) const = default;
};
data_window user_window();
void set_user_window(const data_window& window);

// One of the four fields: what was typed, in the style's form, or the sample number that stands behind an
// untouched text.
struct window_field {
    double typed = 0;
    bool untouched = false;
    int sample = 0;
};

// Takes four fields in the given style (0: f0, bw, t0, dwell; 1: nf0, nf, nt0, nt, truncated) as the window.
// With journal steps present it must lie inside `force`, the window in force; every value is held inside the
// file. On return user holds the corrected window whatever the verdict is, but for one_point, where it holds
// the window as typed. Sets ntime, nfreq and stsf.
window_verdict take_window(const window_field fields[4], int pstyle, const data_window& force);

const char* window_message(window_verdict); // empty for ok

} // namespace norva
