#pragma once
// Closed-form scenes: what a coherent radar receives from a few point scatterers whose motion is known, so
// that every analysis has an input whose answer is known.
//
// Signs. A scatterer of delay tau (microseconds) contributes a exp(-2 pi i f tau) at frequency f (MHz),
// whatever the sign of the frequency step. It follows that
//  - a range profile formed with exponent sign ksy = sign of the step shows it at gate + tau |bw|, bw = nf
//  df;
//  - multiplying by exp(+2 pi i f D) with D = tau(t) takes the motion out;
//  - an approaching scatterer (tau falls) has a positive Doppler frequency -f dtau/dt, and a Doppler profile
//  formed
//    with exponent sign ksx shows it at -ksx times that frequency: the right way round with ksx = -1.
//
// Turntable. The target stands in a plane that turns by da each record about the origin, with angle 0 at
// mid-run; y points away from the radar at angle 0, and x across. A point has the range Y cos(de), Y = y
// cos(th) - x sin(th), less a constant, and for a finite distance rc the exact range from there. With da > 0,
// points of positive x approach: an image formed with ksx = -1 shows them at positive crossrange. With da < 0
// that is so for ksx = +1.

#include <complex>
#include <cstdint>
#include <functional>
#include <vector>

namespace norva {

// Metres a microsecond: the round value that polar formatting uses, so that lengths in metres come out as
// they went in.
constexpr double scene_light = 300.0;

struct scene_point {
    double amplitude = 1.0;
    double phase = 0.0;   // cycles
    double delay = 0.0;   // microseconds, at the first record
    double doppler = 0.0; // Hz at the centre frequency, positive for an approaching point
    double x = 0.0;       // metres on the turntable
    double y = 0.0;
};

struct scene_turntable {
    double da = 0.0; // rotation between records, radians; 0: nothing turns
    double de = 0.0; // depression angle of the line of sight with respect to the plane, radians
    double rc = 0.0; // distance to the axis, metres; 0: far away
};

struct scene {
    int nf = 64;        // frequencies
    int nt = 64;        // records
    double f0 = 9000.0; // first frequency, MHz
    double df = 5.0;    // frequency step, MHz; negative for descending frequencies
    double t0 = 0.0;    // time of the first record, seconds
    double dt = 0.01;   // interval between records, seconds
    double duty = 0.0;  // part of the interval in which a record's frequencies follow each other, 0..1
    double noise = 0.0; // rms of the complex noise in a sample
    std::uint64_t seed = 1;
    scene_turntable table = {};
    std::vector<scene_point> points = {};
    std::function<double(double)> motion =
        {}; // delay of the whole target at a time, microseconds; none: it stands still
};

double scene_bandwidth(const scene& s); // |nf df|, MHz
double scene_centre(const scene& s);    // centre frequency, MHz
double scene_gate(const scene& s);      // delay of one range gate, microseconds

// Motion of `drift` gates a record and `acceleration` gates a record squared: after i records the target has
// moved by drift i + acceleration i^2 / 2 gates.
std::function<double(double)> scene_motion(const scene& s, double drift, double acceleration);

// Time of record `row` and frequency `column`, both from 0.
double scene_time(const scene& s, int row, int column);

// Delay of a point at a time, microseconds.
double scene_delay(const scene& s, const scene_point& point, double time);

// What is received at a frequency (MHz) and a time, without noise.
std::complex<double> scene_sample(const scene& s, double frequency, double time);

// All of it, noise included: nt rows of nf complex samples, interleaved. The noise depends on the seed alone.
std::vector<float> scene_data(const scene& s);

// The motion at the times of the records and one interval past the last, nt + 1 values: the delays that, as a
// correction, take the motion out of scene_data.
std::vector<double> scene_correction(const scene& s);

} // namespace norva
