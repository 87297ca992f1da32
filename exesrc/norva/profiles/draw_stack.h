#pragma once
// The picture that range and Doppler profiles have in common: a stack of curves over an axis in gates, one
// for each time, time upward. Later curves stand behind earlier ones, and what an earlier one covers is not
// drawn.

#include "profiles/draw_vg_rp.h"

#include <cstdio>
#include <span>
#include <string>

namespace norva {

struct stack_picture {
    // in: the profiles. Row j (from 0) belongs to the time t0 + j*dt. Samples that are no finite number count
    // as 0.
    double x1 = 0, dx = 0;       // position of the first sample, spacing; gates
    int n = 0;                   // samples of a row
    double t0 = 0, dt = 0;       // seconds
    std::span<const float> data; // whole rows of n
    // in: how they are drawn
    bool root = false;           // the curves show the square root of the data
    double height = 1;           // of the largest value shown; 1 is 0.4 plot inches
    double truncation = 1;       // curves are cut off at this fraction of the largest value
    const char* x_label = "";    // below
    const char* far_label = "";  // above, for the same axis in another unit
    double far_unit = 0;         // of which a gate has so many; 0: no such axis
    const char* time_label = ""; // left
    // in, out: the time span, snapped to rows: it begins at a row and ends where the row after the last one
    // shown would stand
    double stime = 0, etime = 0;
    // out
    _vgdataframe df;   // the whole box: its upper part, above etime, is room for the last curves
    vgframe_ptr frame; // its first object holds the curves
    double peak = 0;   // largest value shown
    int every = 1;     // 1: every profile is plotted, 2: every second ...
};

// Draws `p` for a display of this size and resolution. Peaks survive whatever the resolution: a curve shows
// the largest of the samples that fall on one pixel.
void draw_stack(const _vgdisplay& disp, stack_picture& p);

// Short texts in one line above the picture.
void add_stack_notes(const _vgdisplay& disp, _vgframe& frame, std::span<const std::string> notes);

// snprintf into a string.
template <class... Values> std::string formatted(const char* format, Values... values) {
    char text[120];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

} // namespace norva
