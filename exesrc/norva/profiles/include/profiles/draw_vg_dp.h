#pragma once
// The picture of a stack of Doppler profiles: Doppler to the right, one curve for each window position, time
// upward. Drawn as the range profiles are.

#include "profiles/draw_vg_rp.h"

#include <span>

namespace norva {

struct dp_picture {
    // in: the profiles. Row j (from 0) belongs to the time t0 + j*dt. Samples that are no finite number count
    // as 0.
    float d1 = 0, dd = 0;          // Doppler of the first sample, spacing; gates
    int nf = 0;                    // samples of a row
    double t0 = 0, dt = 0;         // seconds
    std::span<const float> dpdata; // whole rows of nf: power, or its square with PLOT_POWER
    // in: how they are drawn
    double height = 1;            // as in rp_picture
    double truncation = 1;        // likewise
    int scaling = PLOT_AMPLITUDE; // PLOT_AMPLITUDE: curves show the square root; PLOT_POWER: the values
    // in: the notes
    double gate_hertz = 0;           // width of a gate; 0: no scale in Hz
    int wdw = 0, ifact = 0, lag = 0; // of the sliding window
    // in, out: the time span, snapped to rows as in rp_picture
    double stime = 0, etime = 0;
    // out
    _vgdataframe dp_df; // the whole box
    vgframe_ptr frame;
    double peak = 0; // largest value shown
    int every = 1;   // 1: every profile is plotted, 2: every second ...
};

void draw_vg_dp(const _vgdisplay& disp, dp_picture& p);

} // namespace norva
