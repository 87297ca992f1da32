// Number conversions between the five machines. Bytes b[0].. are named as they stand in memory; all
// conversions of VAX floats go through the byte order of the Sun, in which sign, exponent and fraction lie
// from left to right.
#include "fileio/mcvt.h"

#include <algorithm>
#include <cstring>

namespace norva {

namespace {

using byte = unsigned char;
using converter = void (*)(byte* b);

template <int N> void swap_bytes(byte* b) {
    std::reverse(b, b + N);
}

// The bytes of each 16-bit word exchanged: between the word order of the VAX and that of the Sun.
template <int N> void swap_words(byte* b) {
    for (int i = 0; i < N; i += 2) std::swap(b[i], b[i + 1]);
}

byte low(int x) {
    return static_cast<byte>(x & 0xFF);
}

// Largest VAX value with the sign of a number in Sun order.
template <int N> void largest_vax(byte* b) {
    byte sign = b[0] & 0x80;
    std::memset(b, 255, N);
    b[0] = low(sign + 127);
    std::swap(b[0], b[1]);
}

// VAX F holds excess 128 with the point left of the hidden bit, IEEE excess 127 with the point right of it:
// the same bits stand for an exponent smaller by 2, and 1 in b[0] counts 2.
void vaxsun4(byte* b) {
    swap_words<4>(b);
    if ((b[0] & 0x7F) == 0)
        std::memset(b, 0, 4);
    else
        b[0]--;
}

void sunvax4(byte* b) {
    int e = ((b[0] * 2) & 0xFE) | (b[1] >> 7);
    if (e < 1) {
        std::memset(b, 0, 4);
    } else if (e < 254) {
        b[0]++;
        swap_words<4>(b);
    } else {
        largest_vax<4>(b);
    }
}

// VAX D has 8 bits of exponent and 55 of fraction, IEEE 11 and 52: 3 bits of fraction are lost one way and
// zero the other. 894 = 1023 - 129.
void vaxsun8(byte* b) {
    if (std::all_of(b, b + 8, [](byte x) { return x == 0; })) return;
    swap_words<8>(b);
    int sign = b[0] & 0x80;
    int e = (((b[0] * 2) & 0xFE) | (b[1] >> 7)) + 894;
    for (int i = 7; i > 0; i--) b[i] = low(b[i] >> 3 | b[i - 1] << 5);
    b[0] = low(sign | e >> 4);
    b[1] = low((b[1] & 0x0F) | (e & 0x0F) << 4);
}

void sunvax8(byte* b) {
    int e = (((b[0] * 16) & 0x7F0) | b[1] >> 4) - 894;
    if (e < 1) {
        std::memset(b, 0, 8);
    } else if (e < 256) {
        int sign = b[0] & 0x80;
        for (int i = 0; i < 7; i++) b[i] = low(b[i] << 3 | b[i + 1] >> 5);
        b[7] = low(b[7] << 3);
        b[0] = low(sign | ((e >> 1) & 0x7F));
        b[1] = low((e & 1) << 7 | (b[1] & 0x7F));
        swap_words<8>(b);
    } else {
        largest_vax<8>(b);
    }
}

// G form is the fraction of D moved down by 3 bits through the chain of words, with 11 bits of exponent:
// 896 = 1024 - 128.
void vaxavms8(byte* b) {
    int sign = b[1] & 0x80;
    int e = ((b[1] * 2) & 0xFE) | b[0] >> 7;
    if (e == 0) {
        std::memset(b, 0, 8);
        return;
    }
    for (int i = 6; i > 0; i -= 2) {
        b[i] = low(b[i] >> 3 | (b[i + 1] & 7) << 5);
        b[i + 1] = low(b[i + 1] >> 3 | (b[i - 2] & 7) << 5);
    }
    b[0] = low((b[0] >> 3 & 15) | (e & 15) << 4);
    b[1] = low(((e + 896) & 0x7F0) >> 4 | sign);
}

void avmsvax8(byte* b) {
    int sign = b[1] & 0x80;
    int e = (((b[1] & 0x7F) * 16) | b[0] >> 4) - 896;
    if (e < 1) {
        std::memset(b, 0, 8);
        return;
    }
    if (e >= 256) {
        std::memset(b, 255, 8);
        b[1] = low(sign | 127);
        return;
    }
    for (int i = 0; i < 6; i += 2) {
        b[i] = low(b[i] * 8 | b[i + 3] >> 5);
        b[i + 3] = low(b[i + 3] * 8 | b[i + 2] >> 5);
    }
    b[6] = low(b[6] * 8);
    b[0] = low((b[0] & 0x7F) | (e & 1) << 7);
    b[1] = low(e >> 1 | sign);
}

// One conversion after the other.
template <converter First, converter Second> void both(byte* b) {
    First(b);
    Second(b);
}

constexpr converter swap2 = swap_bytes<2>, swap4 = swap_bytes<4>, swap8 = swap_bytes<8>;
constexpr converter vaxmips4 = both<vaxsun4, swap_bytes<4>>, vaxmips8 = both<vaxsun8, swap_bytes<8>>;
constexpr converter mipsvax4 = both<swap_bytes<4>, sunvax4>, mipsvax8 = both<swap_bytes<8>, sunvax8>;
constexpr converter sunavms8 = both<sunvax8, vaxavms8>, mipsavms8 = both<mipsvax8, vaxavms8>;
constexpr converter avmssun8 = both<avmsvax8, vaxsun8>, avmsmips8 = both<avmsvax8, vaxmips8>;
constexpr converter none = nullptr;

// By source (row) and target (column), VAX, MIPS, Sun, this machine, Alpha VMS.
constexpr converter floats4[5][5] = {
    {none, vaxmips4, vaxsun4, vaxmips4, none}, {mipsvax4, none, swap4, none, mipsvax4},
    {sunvax4, swap4, none, swap4, sunvax4},    {mipsvax4, none, swap4, none, mipsvax4},
    {none, vaxmips4, vaxsun4, vaxmips4, none},
};
constexpr converter floats8[5][5] = {
    {none, vaxmips8, vaxsun8, vaxmips8, vaxavms8},    {mipsvax8, none, swap8, none, mipsavms8},
    {sunvax8, swap8, none, swap8, sunavms8},          {mipsvax8, none, swap8, none, mipsavms8},
    {avmsvax8, avmsmips8, avmssun8, avmsmips8, none},
};

// The choice in force.
thread_local struct {
    converter i2, i4, i8, f4, f8;
} chosen = {none, none, none, none, none};

template <int N> void run(converter convert, void* p, std::size_t n) {
    if (!convert) return;
    auto* b = static_cast<byte*>(p);
    for (std::size_t i = 0; i < n; i++) convert(b + N * i);
}

} // namespace

int setmcvt(int source, int target) {
    if (source < 1 || source > 5 || target < 1 || target > 5) return -1;
    bool reversed = (source == MACHINE_SUN) != (target == MACHINE_SUN);
    chosen.i2 = reversed ? swap2 : none;
    chosen.i4 = reversed ? swap4 : none;
    chosen.i8 = reversed ? swap8 : none;
    chosen.f4 = floats4[source - 1][target - 1];
    chosen.f8 = floats8[source - 1][target - 1];
    return 1;
}

void mcvt_i2(void* p, std::size_t n) {
    run<2>(chosen.i2, p, n);
}
void mcvt_i4(void* p, std::size_t n) {
    run<4>(chosen.i4, p, n);
}
void mcvt_i8(void* p, std::size_t n) {
    run<8>(chosen.i8, p, n);
}
void mcvt_f4(void* p, std::size_t n) {
    run<4>(chosen.f4, p, n);
}
void mcvt_f8(void* p, std::size_t n) {
    run<8>(chosen.f8, p, n);
}
void mcvt_r4(void* p, std::size_t n) {
    mcvt_f4(p, n);
}
void mcvt_r8(void* p, std::size_t n) {
    mcvt_f8(p, n);
}
void mcvt_c(void*, std::size_t) {}
void mcvt_s(void*, std::size_t) {}

} // namespace norva
