#pragma once
// Gaussian noise that is the same everywhere: the standard library leaves its distributions open.

#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>

namespace norva {

struct gauss_noise {
    std::uint64_t state = 1;

    // Uniform in (0, 1]. The generator is splitmix64 (Steele, Lea and Flood, 2014).
    double uniform() {
        std::uint64_t z = state += 0x9E3779B97F4A7C15U;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9U;
        z = (z ^ z >> 27) * 0x94D049BB133111EBU;
        return static_cast<double>((z ^ z >> 31) >> 11) * 0x1p-53 + 0x1p-53;
    }

    // A complex value of mean square 1: Rayleigh amplitude, uniform phase.
    std::complex<double> next() {
        double amplitude = std::sqrt(-std::log(uniform()));
        return std::polar(amplitude, 2.0 * std::numbers::pi * uniform());
    }
};

} // namespace norva
