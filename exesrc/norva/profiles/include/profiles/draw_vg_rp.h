#pragma once
// The picture of a stack of range profiles: range to the right, one curve for each record, time upward. Later
// records stand behind earlier ones, and what an earlier curve covers is not drawn.

#include "vgph/vggph.h"
#include "vgph/vgxw.h"

#include <span>
#include <string>

namespace norva {

constexpr int PLOT_AMPLITUDE = 0, PLOT_POWER = 1; // the "Scaling:" list

struct rp_picture {
    // in: the profiles. Row j (from 0) belongs to the time t0 + j*dt. Samples that are no finite number count
    // as 0.
    float r1 = 0, dr = 0;          // range of the first gate, spacing; gates
    int nr = 0;                    // gates of a row
    double t0 = 0, dt = 0;         // seconds
    std::span<const float> rpdata; // power, whole rows of nr
    // in: how they are drawn
    double height = 1;            // of the largest value shown; 1 is 0.4 plot inches, 8 % of the display
    double truncation = 1;        // curves are cut off at this fraction of the largest value
    int scaling = PLOT_AMPLITUDE; // which quantity the curves show
    // in: the notes
    double gate_metres = 0; // length of a gate; 0: no scale in metres
    double prf = 0;         // Hz
    double xlam = 0;        // wavelength at the centre frequency, m
    int nsamp = 0;          // frequencies of a record
    double r0 = 0;          // range offset of the raw file
    // in, out: the time span, snapped to records: it begins at a record and ends where the record after the
    // last one shown would stand.
    double stime = 0, etime = 0;
    // out
    _vgdataframe rp_df; // the whole box: its upper part, above etime, is room for the last curves
    vgframe_ptr frame;
    double peak = 0; // largest value shown, in the chosen quantity
    int every = 1;   // 1: every profile is plotted, 2: every second ...
};

// Draws `p` for a display of this size and resolution. Peaks survive whatever the resolution: a curve shows
// the largest of the gates that fall on one pixel.
void draw_vg_rp(const _vgdisplay& disp, rp_picture& p);

// Records first..last-1 (from 0) of a span, which is snapped to them. At least one record is shown.
struct record_range {
    int first = 0, last = 0;
};
record_range snap_to_records(double t0, double dt, int nrec, double& stime, double& etime);

// "st", "nd", "rd" or "th", as in 1st, 22nd, 113th.
std::string nsuf(int n);

} // namespace norva
