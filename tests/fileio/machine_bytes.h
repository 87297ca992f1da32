#pragma once
// Numbers in the representation of each machine, made from the definition of the formats and not by the
// routines under test; and whole gate files put together from them.
//
//   IEEE     sign, exponent excess 127 or 1023, fraction behind a hidden 1.
//   VAX F    sign, 8 bits of exponent excess 128, 23 of fraction behind a hidden 0.1; stored as 16-bit words,
//   the word VAX D    with the sign first, each word little-endian. D has 8 bits of exponent and 55 of
//   fraction, G form   11 bits (excess 1024) and 52.

#include "fileio/mcvt.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace norva::test {

inline constexpr int all_machines[] = {MACHINE_VAX, MACHINE_MIPS, MACHINE_SUN, MACHINE_THIS,
                                       MACHINE_ALPHA_VMS};

inline bool is_vax_like(int machine) {
    return machine == MACHINE_VAX || machine == MACHINE_ALPHA_VMS;
}

template <class T> std::string integer_bytes(int machine, T value) {
    std::string bytes(sizeof(T), '\0');
    std::memcpy(bytes.data(), &value, sizeof(T));
    if (machine == MACHINE_SUN) std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

// sign, exponent and fraction of a VAX number as an integer of `bits` bits, cut behind the last bit.
inline std::uint64_t vax_pattern(double value, int bits, int exponent_bits) {
    if (value == 0.0) return 0;
    int exponent = 0;
    double mantissa = std::frexp(std::fabs(value), &exponent); // 0.5 <= mantissa < 1: the hidden 0.1
    int fraction_bits = bits - 1 - exponent_bits;
    auto fraction = static_cast<std::uint64_t>(std::ldexp(mantissa - 0.5, fraction_bits + 1));
    auto biased = static_cast<std::uint64_t>(exponent + (1 << (exponent_bits - 1)));
    std::uint64_t sign = std::signbit(value) ? 1 : 0;
    return sign << (bits - 1) | biased << fraction_bits | fraction;
}

inline std::string vax_bytes(double value, int bits, int exponent_bits) {
    std::uint64_t pattern = vax_pattern(value, bits, exponent_bits);
    std::string bytes;
    for (int shift = bits - 16; shift >= 0; shift -= 16) {
        bytes += static_cast<char>(pattern >> shift & 0xFF);
        bytes += static_cast<char>(pattern >> (shift + 8) & 0xFF);
    }
    return bytes;
}

inline std::string float_bytes(int machine, float value) {
    if (is_vax_like(machine)) return vax_bytes(value, 32, 8);
    return integer_bytes(machine, std::bit_cast<std::uint32_t>(value));
}

inline std::string double_bytes(int machine, double value) {
    if (machine == MACHINE_VAX) return vax_bytes(value, 64, 8);
    if (machine == MACHINE_ALPHA_VMS) return vax_bytes(value, 64, 11);
    return integer_bytes(machine, std::bit_cast<std::uint64_t>(value));
}

// A gate file as one of the five machines writes it.
struct gate_image {
    int machine = MACHINE_THIS, ngat = 3, dattype = 6, incrng = 0, rows = 2;
    double t0 = 2.5, prf = 4.0;
    int reserved = 200;

    // Sample values (I for even v, Q for odd) and ranges that every representation holds.
    static int value(int row, int v) { return (row * 37 + v * 11) % 200 - 100; }
    static double range(int row) { return 1000.0 + row * 0.5; }

    std::string sample(int row, int v) const {
        int x = value(row, v);
        if (dattype == 4) return std::string(1, static_cast<char>(x));
        if (dattype == 5) return integer_bytes(machine, static_cast<std::int16_t>(x * 100));
        return float_bytes(machine, static_cast<float>(x) + 0.25F);
    }
    float expected(int row, int v) const {
        auto x = static_cast<float>(value(row, v));
        return dattype == 4 ? x : dattype == 5 ? x * 100.0F : x + 0.25F;
    }

    std::string element(int row) const {
        std::string bytes = incrng ? double_bytes(machine, range(row)) : "";
        for (int v = 0; v < 2 * ngat; v++) bytes += sample(row, v);
        return bytes;
    }
    std::string keywords() const {
        std::string list;
        list += std::string("\x0B\x01", 2) + integer_bytes(machine, std::int32_t{rows}) +
                std::string("NREC\0", 5);
        list += std::string("\x0D\x02", 2) + double_bytes(machine, t0) + std::string("T0\0", 3);
        list += std::string("\x0B\x03\x04"
                            "abc\0ABC\0",
                            11);
        return list;
    }
    std::string reserved_area() const {
        std::string area = "\x01";
        area += keywords();
        area.resize(static_cast<std::size_t>(reserved));
        return area;
    }
    std::string head(std::int32_t nelements) const {
        std::string bytes = {static_cast<char>(machine), 1, 109, 0};
        auto size = static_cast<std::int32_t>(element(0).size());
        for (std::int32_t x : {std::int32_t{reserved}, std::int32_t{32}, size, nelements})
            bytes += integer_bytes(machine, x);
        return bytes;
    }
    std::string header() const {
        std::string bytes;
        for (int x : {1, ngat, dattype, incrng}) bytes += integer_bytes(machine, std::int32_t{x});
        return bytes + double_bytes(machine, t0) + double_bytes(machine, prf);
    }
    std::string bytes() const {
        std::string all = head(rows) + reserved_area() + header();
        for (int row = 0; row < rows; row++) all += element(row);
        return all;
    }
};

} // namespace norva::test
