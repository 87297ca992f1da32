#pragma once
// Records for the cut processor, and cuts whose transform is known.

#include "cut/pc_apply.h"
#include "cut/procut.h"
#include "signal/weight.h"
#include "state/image_cut.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <string>
#include <vector>

namespace norva::cut_test {

using cut_words = std::vector<std::int32_t>;

inline void put(cut_words& w, int v) {
    w.push_back(v);
}
inline void put(cut_words& w, float v) {
    w.push_back(std::bit_cast<std::int32_t>(v));
}
inline void put(cut_words& w, double v) {
    put(w, static_cast<float>(v));
}
inline void put(cut_words& w, const std::vector<float>& v) {
    for (float x : v) put(w, x);
}

template <class... Values> cut_words record(Values... values) {
    cut_words w;
    (put(w, values), ...);
    return w;
}

inline std::vector<std::int32_t> answer(const cut_words& in) {
    std::vector<std::int32_t> out(PC_RESULT_WORDS);
    procut(in, out);
    return out;
}

inline pc_result run(const cut_words& in) {
    pc_result r;
    pc_unpack(answer(in), r);
    return r;
}
template <class... Values> pc_result act(Values... values) {
    return run(record(values...));
}

// The message of a failure; "" for success.
template <class... Values> std::string message(Values... values) {
    return act(values...).message;
}

// A new cut: nothing stored is to be replayed.
inline pc_result open(const cut_words& initial) {
    cutj.jf = 0;
    return run(initial);
}

struct cut_point {
    double at;            // gates
    double amplitude = 1; // of the transform at its middle
    double phase = 0;     // cycles
};

constexpr int BAND = 128; // samples of the data across the band

// Sample x of the data, -0.5..0.5, with the weighting lw: uniform or circular.
inline std::complex<double> data_at(double x, const std::vector<cut_point>& points, int lw) {
    std::complex<double> sum = 0;
    for (const cut_point& p : points)
        sum += std::polar(p.amplitude, -kss * 2 * M_PI * (p.at * x + kss * p.phase));
    return lw == 0 ? sum : sum * static_cast<double>(diawght(static_cast<float>(2 * x)) / diawght(0));
}

// The initial record of a cut of BAND gates with ls samples each, by the direct sum over the data.
inline cut_words point_cut(const std::vector<cut_point>& points, int ls, int lw = 0, int kc = 2) {
    const int nc = BAND * ls;
    const double dc = 1.0 / ls, c1 = -(nc / 2) * dc;
    cut_words w = record(PC_INIT, lw, kc, nc, c1, dc);
    std::vector<std::complex<double>> data;
    for (int j = 0; j < BAND; j++) data.push_back(data_at(static_cast<double>(j) / BAND - 0.5, points, lw));
    std::vector<std::complex<double>> turns(static_cast<std::size_t>(nc));
    for (int m = 0; m < nc; m++) turns[m] = std::polar(1.0 / BAND, kss * 2 * M_PI * m / nc);
    for (int k = 0; k < nc; k++) {
        std::complex<double> c = 0;
        for (int j = 0; j < BAND; j++) {
            // (k - nc/2)/ls gates times (j - BAND/2)/BAND cycles a gate
            const int m = (k - nc / 2) * (j - BAND / 2) % nc;
            c += data[j] * turns[m < 0 ? m + nc : m];
        }
        put(w, static_cast<float>(c.real()));
        put(w, static_cast<float>(c.imag()));
    }
    return w;
}

// No stored actions, nothing known of an image.
inline void forget() {
    img = {};
    kss = -1;
    cutj = {};
}

} // namespace norva::cut_test
