#pragma once
// A complex curve as amplitude and phase, and back. Complex samples are interleaved floats; phases in cycles.

namespace norva {

// Samples whose amplitude is at most this part of the peak have no phase of their own.
constexpr float AMPHS_LEVEL = 0.01F;

// Scales n complex samples so that the largest amplitude is 1; scale receives what it was. 0 leaves them as
// they are: all are zero. A value that is no number, or an infinite one, gives a scale of infinity.
void ampscl(float* x, int n, float* scale);

// What brings the largest amplitude of a curve to 1: first `range`, a power of two that is not 1 where
// squares would leave the range of a float, then `unit`.
struct curve_scale {
    float amplitude = 0; // 0: all samples are zero. Infinite: one is no number, or infinite
    float range = 1, unit = 1;
};
curve_scale scale_of(const float* x, int n);

// A curve as it is shown: scaled, amplitude and phase as amphs gives them, real and imaginary part, which may
// both be null. Returns the first sample of the largest amplitude, from 0.
struct curve_arrays {
    float *am, *ph;
    float *re = nullptr, *im = nullptr;
};
int curve_parts(const float* x, int n, const curve_scale& scale, int ks, const curve_arrays& to);
// Real and imaginary part alone. Here and above they may lie in an array of other words.
void curve_split(const float* x, int n, const curve_scale& scale, float* re, float* im);

// x = |x| for n complex samples.
void rectify(float* x, int n);

// Gives n complex samples the amplitudes level*w, where they are not 0. Their scale is that of the curve.
void equalize(float* x, const float* w, int n, const curve_scale& scale, float level);

// Amplitude, and phase ks/(2 pi) atan2(im, re) in cycles, unwrapped from the first sample of more than 1 % of
// the peak on. Phases of samples at or below that level lie on the line between their neighbours above it, or
// on the line through the first or last two of these.
void amphs(const float* x, int n, int ks, float* am, float* ph);

// x = am exp(ks 2 pi i ph).
void aptocx(const float* am, const float* ph, int n, int ks, float* x);

// x(k) *= exp(sign 2 pi i ph(k)).
void turn(float* x, int n, int sign, const float* ph);

// x(k) *= exp(2 pi i (k*step + start)), k from 0; cycles.
void turn_line(float* x, int n, double step, double start);

// y(k) = x(k) w(k) for n complex samples x and real w; y may be x.
void weigh(const float* x, const float* w, int n, float* y);
// x(k) *= deweight(k)*factor*w(k): one weighting instead of another.
void reweigh(float* x, const float* deweight, const float* w, int n, float factor);

// Central differences (a(k+1) - a(k-1))/2, one-sided at the ends; 0 for a single sample. b may be a.
void differ(const float* a, int n, float* b);

} // namespace norva
