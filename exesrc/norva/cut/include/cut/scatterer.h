#pragma once
// Tools for the phase of a cut: removal of a jump, axis limits, and the estimation of two scatterers that are
// not resolved from the phase between two nulls and the size of the jump there. Samples count from 1.

namespace norva {

// Removes a jump between the samples k1 and k2 of the phase p (n samples, cycles), in place. pj is its size:
// spread over the interval, and taken off all that follows. With pj = 0 the jump is found from the curvature
// near the interval, and its size from the straight lines to both sides. Nothing happens unless
// 2 < k1 < k2 < n-1.
void phsjmp(float* p, int n, int k1, int k2, float pj);

// Tidy axis limits for the phases p (cycles) of the samples whose amplitude a is at least 5 % of the largest:
// outward to half cycles, then to whole steps.
void phslim(const float* a, const float* p, int n, float* pmin, float* pmax);

// The limits low < high moved outward to multiples of the smallest step of 0.5, 1, 2, 5, 10, 20, ... that is
// at least a tenth of the span.
void axset(float low, float high, float* tidy_low, float* tidy_high);

// sum of atan2(a sin(omega t + phi), 1 + a cos(omega t + phi)) t dt over n points from start to end (the
// middles of n equal cells): the first moment of the phase that a scatterer of the relative amplitude a adds.
float alpha(float a, float omega, float phi, float start, float end, int n);

// A running estimate of a phase, radians, and the part of a step by which it follows.
struct phase_estimate {
    float est = 0;
    float ctau = 1;
    double turns = 0; // radians that were added to the last phase
};

// The branch of the phase ph (radians) nearest the estimate, which moves toward it.
float readjp(float ph, phase_estimate& estimate);

// Two scatterers of unlike amplitude whose sum has nulls, where the phase jumps.
//   amp, phase    npts samples; phase in radians
//   dcval         slope known beforehand, cycles per unit of the axis; 0
//   itau1, itau2  samples that bound the part between the two jumps whose slope is taken
//   biglen, tim0  extent of the axis from the first sample to the last, and the first position
//   deweight, dew "Y" in dew: amp is without a weighting. Else it is taken out as deweight tells: "H", "S"
//                 Hamming, "a", "A" tabulated, "t", "T" Taylor
//   itrans        +1 or -1: a scatterer at f turns the phase by itrans 2 pi f per unit
//   tj1, tj2      sample numbers of two nulls that follow each other
//   jump          phase jump there, cycles, below 0.5. The ratio of the amplitudes is |sin(pi jump)|
//   f1, f2        out: positions of the stronger and the weaker one
//   ampstr, ampwk out: their amplitudes
//   phi1, phi2    out: their phases at the origin of the axis, radians: the signal is
//                 ampstr e(f1 t + phi1) + ampwk e(f2 t + phi2), e(..) = exp(itrans i ..) with 2 pi f
//   ierr          out: 1 for fewer than 3 samples, else 0
// The slope between the jumps is that of the stronger plus what the weaker adds, which has one sign or the
// other by the order of the two; the order is taken that fits the slope of the whole band.
void scatinta1(const float* amp, const float* phase, int npts, float dcval, int itau1, int itau2,
               float biglen, const char* deweight, const char* dew, int* ierr, float tim0, int itrans,
               float tj1, float tj2, float jump, float* f1, float* f2, float* ampstr, float* ampwk,
               float* phi1, float* phi2);

} // namespace norva
