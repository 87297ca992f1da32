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

// Items of a keyword list: size, type, value, name with its NUL.
inline std::string double_item(int machine, const std::string& name, double value) {
    return std::string{static_cast<char>(name.size() + 11), 2} + double_bytes(machine, value) + name + '\0';
}
inline std::string int_item(int machine, const std::string& name, std::int32_t value) {
    return std::string{static_cast<char>(name.size() + 7), 1} + integer_bytes(machine, value) + name + '\0';
}
inline std::string string_item(const std::string& name, const std::string& value) {
    return std::string{static_cast<char>(name.size() + value.size() + 5), 3,
                       static_cast<char>(value.size() + 1)} +
           value + '\0' + name + '\0';
}

// A data file; its head, the area of its keyword list, its header and its elements in that machine's form.
struct series_image {
    int machine = MACHINE_THIS, filetype = 0;
    std::string header;
    int elemsize = 0; // shorter elements are filled up
    std::vector<std::string> elements;
    int nelements = -1;    // those there are
    std::string list = {}; // items of the keyword list
    int reserved = 128;

    std::string head() const {
        std::string b = {static_cast<char>(machine), 1, static_cast<char>(filetype), 0};
        for (std::size_t x :
             {static_cast<std::size_t>(reserved), header.size(), static_cast<std::size_t>(elemsize),
              nelements < 0 ? elements.size() : static_cast<std::size_t>(nelements)})
            b += integer_bytes(machine, static_cast<std::int32_t>(x));
        return b;
    }
    std::string bytes() const {
        std::string area = '\x01' + list;
        area.resize(static_cast<std::size_t>(reserved));
        std::string b = head() + area + header;
        for (std::string e : elements) {
            e.resize(static_cast<std::size_t>(elemsize));
            b += e;
        }
        return b;
    }
};

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
        return int_item(machine, "NREC", rows) + double_item(machine, "T0", t0) + string_item("ABC", "abc");
    }
    series_image image() const {
        series_image made{machine, 109, {}, static_cast<int>(element(0).size()), {}};
        for (int x : {1, ngat, dattype, incrng}) made.header += integer_bytes(machine, std::int32_t{x});
        made.header += double_bytes(machine, t0) + double_bytes(machine, prf);
        for (int row = 0; row < rows; row++) made.elements.push_back(element(row));
        made.list = keywords();
        made.reserved = reserved;
        return made;
    }
    std::string bytes() const { return image().bytes(); }
};

} // namespace norva::test
