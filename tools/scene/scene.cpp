// Closed-form scenes.
#include "scene/scene.h"

#include "gauss.h"

#include <cmath>
#include <numbers>

namespace norva {

namespace {

// Records since the first, with fractions.
double records(const scene& s, double time) {
    return (time - s.t0) / s.dt;
}

// Range of a point less that of the turntable's axis, metres.
double table_range(const scene& s, const scene_point& p, double time) {
    const scene_turntable& table = s.table;
    double angle = (records(s, time) - 0.5 * (s.nt - 1)) * table.da;
    double along = std::cos(table.de) * (p.y * std::cos(angle) - p.x * std::sin(angle));
    if (table.rc <= 0.0) return along;
    // sqrt(rc^2 + v) - rc, written so that nothing cancels
    double v = 2.0 * table.rc * along + p.x * p.x + p.y * p.y;
    return v / (std::sqrt(table.rc * table.rc + v) + table.rc);
}

// exp(2 pi i cycles), with whole cycles taken off while the number is exact.
std::complex<double> turn(double cycles) {
    return std::polar(1.0, 2.0 * std::numbers::pi * std::remainder(cycles, 1.0));
}

} // namespace

double scene_bandwidth(const scene& s) {
    return std::fabs(s.nf * s.df);
}

double scene_centre(const scene& s) {
    return s.f0 + 0.5 * (s.nf - 1) * s.df;
}

double scene_gate(const scene& s) {
    return 1.0 / scene_bandwidth(s);
}

std::function<double(double)> scene_motion(const scene& s, double drift, double acceleration) {
    return [gate = scene_gate(s), t0 = s.t0, dt = s.dt, drift, acceleration](double time) {
        double i = (time - t0) / dt;
        return gate * (drift * i + 0.5 * acceleration * i * i);
    };
}

double scene_time(const scene& s, int row, int column) {
    return s.t0 + (row + s.duty * column / s.nf) * s.dt;
}

double scene_delay(const scene& s, const scene_point& p, double time) {
    double delay = p.delay - p.doppler / scene_centre(s) * (time - s.t0);
    delay += 2.0 * table_range(s, p, time) / scene_light;
    return s.motion ? delay + s.motion(time) : delay;
}

std::complex<double> scene_sample(const scene& s, double frequency, double time) {
    std::complex<double> sum = 0.0;
    for (const scene_point& p : s.points)
        sum += p.amplitude * turn(p.phase - frequency * scene_delay(s, p, time));
    return sum;
}

std::vector<float> scene_data(const scene& s) {
    std::vector<float> data;
    data.reserve(2 * static_cast<std::size_t>(s.nt) * static_cast<std::size_t>(s.nf));
    gauss_noise noise{s.seed};
    for (int row = 0; row < s.nt; row++)
        for (int column = 0; column < s.nf; column++) {
            std::complex<double> z = scene_sample(s, s.f0 + column * s.df, scene_time(s, row, column));
            if (s.noise > 0.0) z += s.noise * noise.next();
            data.push_back(static_cast<float>(z.real()));
            data.push_back(static_cast<float>(z.imag()));
        }
    return data;
}

std::vector<double> scene_correction(const scene& s) {
    std::vector<double> delays;
    for (int row = 0; row <= s.nt; row++) delays.push_back(s.motion ? s.motion(scene_time(s, row, 0)) : 0.0);
    return delays;
}

} // namespace norva
