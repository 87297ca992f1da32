#pragma once
// The cut processor: holds a one-dimensional complex signal and its transform, edits either, measures phases
// and peaks, and derives new cuts and motion compensation. Its actions are kept and can be replayed. Knows
// nothing of windows; one cut at a time.
//
// The image domain C has nc samples from c1 in steps of dc, in gates along the cut, zero at the pivot point.
// The transform domain X has nx samples from x1 in steps of dx: for a cut from an image cycles per gate, the
// band of the data in -0.5 to 0.5; for one-dimensional data the raw signal itself, in MHz or seconds, in its
// first samples. They belong together by
//
//   C(c) = sum over x of X(x) exp(kss 2 pi i c x)
//
// Phases are in cycles, as plotted: that of the image domain has the sign kss, that of the transform -kss, so
// that a scatterer at c shows the slope c in the transform.
//
// Records are arrays of 32-bit words; reals travel by their bits. ch1, ch2 are positions of crosshairs, id is
// the domain (0 image, 1 transform). Action records:
//
//   0  Initialization           lw kc nc c1 dc, 2*nc words of the cut
//   1  change weight            lw nch (0 or 2) crosshairs
//   2  data edit                id nch (1 to 8) crosshairs
//   3  subtract phase slope     id ch1 ch2 p1 p2
//   4  subtract phase spline
//   5  remove phase jump        ch1 ch2 phj (0: found automatically)
//   6  set phase to zero        ch1 ch2
//   7  set amplitude to unity   ch1 ch2
//   8  differentiate            id kd kf
//   9  restore differentiate
//  10  deweight for display     kdd
//  11  show previous state      kps
//  14  pk params/n xhrs         nch crosshairs
//  15  pk params/xhr pair       ch1 ch2
//  16  measure phase slope      id ch1 ch2
//  17  measure phase spline     ids nbp nph x1p dxp, nph phases, nbp break points
//  18  two scatterer algorithm  ch1 ch2 xj1 xj2 pjp
//  19  parallel cut             dsh
//  20  perpendicular cut        ch1 flag
//  21  shft pt to orig in img   cs fc bw flag
//  22  motion compensate        fc bw
//  23  restart
//  24  backup                   count
//  25  forward
//  26  exit
//  27  reentry
//  30  1-D initialization       lw kc (signed) nw x1 dx, 2*nw words of the signal
//
// A result record starts with -1, the length of a message and its 72 characters in words 2 to 19, or with the
// step (plus 100 times the step of the image); pc_unpack takes it apart.
//
// The stored actions are the first record and the actions behind it: a back-up replays them, with the same
// bits as in the first run. An action that fails leaves step and stored actions as they were. One that leaves
// no signal (error 195) stays applied, unstored, until a back-up; nothing else is done meanwhile.

#include <cstdint>
#include <span>

namespace norva {

constexpr int PC_MAX_SAMPLES = 8192;   // of a cut and of its transform; zero padding included
constexpr int PC_MAX_RAW = 2048;       // of one-dimensional data, which are padded fourfold
constexpr int PC_MAX_CROSSHAIRS = 8;   // of one action
constexpr int PC_MAX_BREAKS = 400;     // break points of a phase spline
constexpr int PC_MAX_DERIVATIVE = 100; // order of a derivative
constexpr int PC_MESSAGE_CHARACTERS = 72;
constexpr int PC_HEADER_WORDS = 6; // of a common result, without its arrays
constexpr int PC_DATA_WORD = 6;    // first data word of actions 0 and 30
// The longest result: ten arrays and the few words of an action. The delays of the longest data are fewer.
constexpr int PC_RESULT_WORDS = PC_HEADER_WORDS + 10 * PC_MAX_SAMPLES + 64;

constexpr int PC_INIT = 0, PC_WEIGHT = 1, PC_EDIT = 2, PC_SUB_SLOPE = 3, PC_SUB_SPLINE = 4, PC_PHASE_JUMP = 5,
              PC_ZERO_PHASE = 6, PC_UNIT_AMPLITUDE = 7, PC_DIFFERENTIATE = 8, PC_RESTORE = 9,
              PC_DEWEIGHT = 10, PC_PREVIOUS = 11, PC_PEAKS = 14, PC_PEAK_PAIR = 15, PC_SLOPE = 16,
              PC_SPLINE = 17, PC_TSA = 18, PC_PARALLEL = 19, PC_PERPENDICULAR = 20, PC_SHIFT = 21,
              PC_MOCOMP = 22, PC_RESTART = 23, PC_BACKUP = 24, PC_FORWARD = 25, PC_EXIT = 26, PC_REENTRY = 27,
              PC_ABORT = 28, PC_INIT_1D = 30;

// Performs the action of the record `in`, which is as long as its action needs; more words do no harm, and
// missing ones count as a failure. `out` must hold PC_RESULT_WORDS words, of which those of the result are
// written, and must not lie over `in`. Reads kss, the place of the cut (img) and the stored actions (cutj) of
// state/image_cut.h.
void procut(std::span<const std::int32_t> in, std::span<std::int32_t> out);

// The weighting shown (kdd: 1 deweighted), the weighting, the domain of the last action that had one, and
// the phase slope subtracted so far (its bits).
void procutpar(std::span<std::int32_t, 4> out);

// "Initialization" ... "1-D initialization"; "" for a number without an action.
const char* pc_action_name(int action);

} // namespace norva
