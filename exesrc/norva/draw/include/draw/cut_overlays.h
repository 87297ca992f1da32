#pragma once
// The texts that a cut window lays over its graphs: measured values in blocks whose upper left corner is at
// x, y (plot inches), with capital letters of the height h.

#include "vgph/vggph.h"

#include <span>

namespace norva {

// A straight line fitted to the phase of one graph, between two crosshairs.
struct fitted_phase {
    double x0 = 0, x1 = 0;        // crosshairs, on the graph's axis
    double p1 = 0, p2 = 0;        // phases of the line there, cycles
    int domain = 0;               // 0 image, 1 transform
    double first = 0, step = 0;   // axis of the samples
    std::span<const float> phase; // of the samples, cycles
};

struct phase_slope {
    double slope = 0;  // cycles a unit of the axis; of one-dimensional data what it stands for (below)
    double rms = 0;    // of the samples' distance to the line, from crosshair to crosshair
    double pk_dev = 0; // the distance of greatest magnitude, with its sign
    double bias = 0;   // phase of the line at 0
};

// Slope of the line and the phase's distance to it. The slope of one-dimensional data is shown as a place: in
// the transform as the span that it amounts to, of bandwidth (user.nt 1) or dwell (user.nf 1); in the image
// as a frequency or a time. 0 where the crosshairs coincide.
phase_slope measure_phase_slope(const fitted_phase& line);

extern float xproc_bias; // of the line that was shown last

// "xhr0", "xhr1", "slope", "rms", "pk dev", "bias", and keeps the bias.
vgobject_ptr draw_vg_ps(float x, float y, float h, const fitted_phase& line);

struct peak_shape {
    float position, width, skewness;
};
// A row for each crosshair.
vgobject_ptr draw_vg_ppsyms(float x, float y, float h, std::span<const peak_shape> peaks);

struct scatterer_pair {
    float strong_place, strong_amplitude, weak_place, weak_amplitude;
};
vgobject_ptr draw_vg_tsa(float x, float y, float h, const scatterer_pair& found);

struct cut_geometry {
    float length, spacing;               // gates
    float crossrange_pivot, range_pivot; // gates
    float angle;                         // degrees
    float bias;
};
vgobject_ptr draw_vg_cinfo(float x, float y, float h, const cut_geometry& cut);

// What the measured places are relative to: the pivot point (origin 0) or the image origin (1).
vgobject_ptr draw_vg_meas(float x, float y, float h, int origin);

} // namespace norva
