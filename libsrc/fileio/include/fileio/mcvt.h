#pragma once
// Conversion of numbers between the representations of the five machines that write data files. Works in
// place on one value or on a run of values that stand one behind the other; values need no alignment.
//
// setmcvt chooses the pair of machines, the mcvt_ routines then convert. The choice is one for the whole
// thread: whoever converts calls setmcvt first, since two open files may come from different machines.
//
//   code  machine       integers        4-byte float    8-byte float
//   1     VAX           little-endian   VAX F           VAX D
//   2     MIPS          little-endian   IEEE little     IEEE little
//   3     Sun           big-endian      IEEE big        IEEE big
//   4     this machine  little-endian   IEEE little     IEEE little
//   5     Alpha VMS     little-endian   VAX F           G form

#include <cstddef>

namespace norva {

constexpr int MACHINE_VAX = 1;
constexpr int MACHINE_MIPS = 2;
constexpr int MACHINE_SUN = 3;
constexpr int MACHINE_THIS = 4;
constexpr int MACHINE_ALPHA_VMS = 5;

// Installs the routines that turn values of machine `source` into values of machine `target`. Returns 1, or
// -1 when a code is outside 1..5; the choice in force then stays.
int setmcvt(int source, int target);

// Each converts n values from p on.
void mcvt_i2(void* p, std::size_t n = 1); // 2-byte integers
void mcvt_i4(void* p, std::size_t n = 1); // 4-byte integers
void mcvt_i8(void* p, std::size_t n = 1); // 8-byte integers
void mcvt_f4(void* p, std::size_t n = 1); // 4-byte floats
void mcvt_f8(void* p, std::size_t n = 1); // 8-byte floats
void mcvt_r4(void* p, std::size_t n = 1); // mcvt_f4 under its other name
void mcvt_r8(void* p, std::size_t n = 1); // mcvt_f8 under its other name
void mcvt_c(void* p, std::size_t n = 1);  // characters: nothing is done
void mcvt_s(void* p, std::size_t n = 1);  // strings: nothing is done

} // namespace norva
