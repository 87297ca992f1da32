#pragma once
// The blocks between the cut window and the cut processor.

#include <array>

namespace norva {

struct _vgobject;

// Crosshairs of one plot.
struct xhairs {
    std::array<_vgobject*, 8> crshr{}; // the lines drawn; they belong to the plot's display
    std::array<float, 8> xval{};       // positions on the active axis
    int mode = 0;                      // operation: 0 add, 1 move, 2 delete
    int cnt = 0;                       // crosshairs set
    int invert =
        -1;       // -1 one colour; 1: a data edit keeps what lies outside. Actions 20, 21: > 0 takes the peak
    int nmax = 0; // largest count
    int domain = 0; // 0 image, 1 transform
    int ncurv = 0;  // curve of the active graph
};

// Axis limits of the four graphs: phase and amplitude of the image domain, then of the transform.
struct xproc_lims {
    int auto_phs = 1; // phase graphs take their limits from phslim
    float g1x0 = 0, g1x1 = 0, g1y0 = 0, g1y1 = 0;
    float g2x0 = 0, g2x1 = 0, g2y0 = 0, g2y1 = 0;
    float g3x0 = 0, g3x1 = 0, g3y0 = 0, g3y1 = 0;
    float g4x0 = 0, g4x1 = 0, g4y0 = 0, g4y1 = 0;
};

// The block of one cut. Passed by value into the window that opens.
struct procut_parms {
    int mode = 0;         // in: action wanted. out: action the cut stands at
    int dwt = 0;          // deweight for display (action 10), previous state (action 11)
    int lw = 0;           // weighting: 0 uniform, 1 circular, 2 Hamming, 3 Blackman
    int id = 0;           // domain to differentiate: 0 image, 1 transform
    int kc = 0;           // 1 along range, 2 along crossrange, 3 diagonal nearer range, 4 nearer crossrange;
                          // 1-D data: 1 time, 2 frequency, with the sign of the transform on entry
    int n = 0;            // samples of the cut
    float c1 = 0, dc = 0; // first position and spacing. c1 in action 19: the shift
    const float* data = nullptr; // 2*n floats, owned by the caller
    int xn = 0;                  // out: samples of the transform
    float u0 = 0, du = 0;        // out: first value and span of the cut axis
    float xu0 = 0, xdu = 0;      // out: of the transform axis
    float fc = 0, bw = 0;        // centre frequency, bandwidth, MHz
    float p1 = 0, p2 = 0; // phases fitted at the two crosshairs, cycles: set by action 16, read by action 3.
                          // Action 18: the two ends of a phase jump
    float pjmp = 0;       // phase jump, cycles
    int kflag = 0;        // derivative of 0 amplitude, 1 phase, 2 both, 3 real and imaginary part
    int phs_msrd = 0;     // a phase slope was measured
    int spl_msrd = 0;     // a phase spline was measured
    int kd = 0;           // order of the derivative
    xhairs* xhrs = nullptr; // the window's crosshairs
    xproc_lims lims;
};

} // namespace norva
