#pragma once
// The image processor driven by records, and scenes to feed it with.

#include "image/proimag.h"
#include "scene/scene.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

namespace norva::test {

// An action record, written word by word.
struct record {
    std::vector<std::int32_t> words;
    explicit record(int mode = PI_INIT) : words{mode} {}
    record& i(int value) {
        words.push_back(value);
        return *this;
    }
    record& f(double value) {
        words.push_back(std::bit_cast<std::int32_t>(static_cast<float>(value)));
        return *this;
    }
    bool operator==(const record&) const = default;
};

struct formation {
    int ksx = -1, ksy = 1, ifx = 1, ify = 1, npmx = 50, kscl = 2;
    double apmn = 0.05, diam = 1;
};

inline record init_record(const std::vector<float>& data, int nf, int nt, const formation& how = {}) {
    record r = record(PI_INIT).i(nf).i(nt).i(1).i(how.ksx).i(how.ksy).i(how.ifx).i(how.ify);
    r.i(how.npmx).i(how.kscl).f(how.apmn).f(how.diam);
    for (float v : data) r.f(v);
    return r;
}

// The words of the last result as they came.
inline std::vector<std::int32_t>& result_words() {
    static std::vector<std::int32_t> out(PI_RESULT_WORDS);
    return out;
}

inline pi_result act(const record& r) {
    std::fill(result_words().begin(), result_words().end(), 0);
    proimag(r.words, result_words());
    pi_result result;
    pi_unpack(result_words(), result);
    return result;
}

// Everything the last call returned.
inline std::uint64_t digest() {
    std::uint64_t hash = 1469598103934665603U;
    for (std::int32_t w : result_words()) hash = (hash ^ static_cast<std::uint32_t>(w)) * 1099511628211U;
    return hash;
}

// A turntable whose gates are 1 m in range and about 1 m across; x to the right for the signs given.
struct turntable {
    scene s;
    double gate_x, gate_y; // metres
    turntable(int nf, int nt, int ksx, int ksy) {
        const double bw = 150.0, fc = 9000.0;
        s.nf = nf;
        s.nt = nt;
        s.df = ksy * bw / nf;
        s.f0 = fc - 0.5 * (nf - 1) * s.df;
        gate_x = gate_y = 1.0;
        s.table.da = -ksx * scene_light / (2 * fc * nt * gate_x);
    }
    void add(double x, double y, double amplitude = 1, double phase = 0) {
        s.points.push_back({.amplitude = amplitude, .phase = phase, .x = x * gate_x, .y = y * gate_y});
    }
    std::vector<float> data() const { return scene_data(s); }
    record init(formation how = {}) const {
        how.ksy = s.df > 0 ? 1 : -1;
        how.ksx = s.table.da > 0 ? -1 : 1;
        return init_record(data(), s.nf, s.nt, how);
    }
};

} // namespace norva::test
