#pragma once
// The image processor: forms a two-dimensional complex image from the data and works on it by actions that
// are kept and can be replayed. Knows nothing of windows; one image at a time.
//
// Coordinates are in gates: one gate is a resolution cell of the data before zero fill, x crossrange, y
// range.
//
// Records are arrays of 32-bit words; reals travel by their bits. Action records:
//
//   0  Initialization       nf nt kw ksx ksy ifx ify npmx kscl apmn diam, 2*nf*nt data words
//   1  Flop Image           kflop (1 x, 2 y, 3 both)
//   3  Change Peak Scaling  npmx kscl apmn diam
//   4  Edit                 xc1 xc2 yc1 yc2
//   5  Interpolate          ifx ify
//   6  Peak Parameters      xc yc
//   7  Status
//   8  Compute Cut          wct dct xpv ypv ang
//   9  Center Image         xc yc fc bw flag
//  10  Polar Format Init.   words 1 to 11 as action 0, itp xex yex f1 df rc da du sa de, data
//  11  Write Data File After Image Edit
//  16  go to a step         step
//  17  back up or advance   signed number of steps
//  18  store the cut's journal
//  19  end, and export the stored actions
//  20  restore stored actions: nn ns, nn-1 words
//  21  end
//
// Result records start with -1, the length of a message and its 72 characters in words 2 to 19, or with the
// step; pi_unpack takes them apart.
//
// The stored actions are the first record and the actions behind it, never an image: a back-up replays them.
// A replay gives the same bits as the first run. An action that fails changes nothing: image, step and stored
// actions stay. A replay that fails (stored actions come from files, and may meet other data than those they
// were made with) ends at the step where it began.

#include "zuvsys/jbuf.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace norva {

struct plr_kws;

constexpr int PI_MAX_DATA = 131072;       // samples times factors that an action may ask for
constexpr int PI_MAX_SAMPLES = 1048576;   // complex samples of one image
constexpr int PI_MAX_PEAKS = 1000;        // of one image
constexpr int PI_MAX_CUT = 8192;          // samples of one cut
constexpr int PI_JOURNAL_WORDS = 2197152; // of the stored actions, the first record included
constexpr int PI_DATA_WORD = 12;          // first data word of action 0
constexpr int PI_POLAR_DATA_WORD = 22;    // and of action 10
constexpr int PI_HEADER_WORDS = 13;       // of a common result
constexpr int PI_MESSAGE_CHARACTERS = 72;
// The longest result: header, peaks, amplitudes, and the samples of a cut. Data after an edit take 6 words
// and two a sample; exported actions 4 words and what is stored.
constexpr int PI_RESULT_WORDS = PI_JOURNAL_WORDS + 16;

constexpr int PI_INIT = 0, PI_FLOP = 1, PI_WEIGHT = 2, PI_PEAK_SCALING = 3, PI_EDIT = 4, PI_INTERPOLATE = 5,
              PI_PEAK_PARAMETERS = 6, PI_STATUS = 7, PI_CUT = 8, PI_CENTER = 9, PI_POLAR = 10, PI_WRITE = 11,
              PI_GO = 16, PI_STEP = 17, PI_STORE_CUT = 18, PI_EXPORT = 19, PI_RESTORE = 20, PI_END = 21;

// Performs the action of the record `in`, which is as long as its action needs; more words do no harm, and
// missing ones are a failure. `out` holds at least the 20 words of a failure; with PI_RESULT_WORDS every
// result fits, and one that does not is a failure.
void proimag(std::span<const std::int32_t> in, std::span<std::int32_t> out);

// wct, dct, xpv, ypv, ang, apmn as last used, after rounding and resolving.
void proimagpar(std::span<float, 6> out);

// "Initialization" ... "Polar Format Initialization" for actions 0 to 10; "" for others.
const char* pi_action_name(int action);

// The block between the image window and pi_apply.
struct proimag_parms {
    int mode = 0;             // in: action wanted. out: action the image stands at
    int nf = 0, nt = 0;       // of the data
    int kw = 1;               // weighting selector
    int ksx = -1, ksy = 1;    // transform signs
    int ifx = 1, ify = 1;     // interpolation factors
    int npmx = 0;             // largest number of peaks
    int kscl = 1;             // 1 "power", 2 "amplitude", 3 "sqrt of amplitude"
    float apmn = 0;           // low threshold, 0 to 1; -f: f times the mean amplitude
    float diam = 0;           // dot diameter of the highest peak
    const float* q = nullptr; // 2*nf*nt floats, not owned
    int nx = 0, ny = 0;       // out: image size, samples
    float x1 = 0, y1 = 0;     // out: first sample
    float dx = 0, dy = 0;     // out: spacing
    int imgtype = 0;          // 0 peaks, 1 contours, 2 colour intensity
    int mc_level = 0;         // corrections in force when the window opened
    int count = 0;            // out: step
    int kflop = 1;            // action 1: 1 x, 2 y, 3 both. Action 9: 1 snap to the peak, 0 use the point
    int nbu = 0;              // actions 16, 17: step, or number of steps
    float xc1 = 0, xc2 = 0, yc1 = 0, yc2 = 0; // box of the edit
    float r1 = 0, r2 = 0, c1 = 0, c2 = 0;     // end points of a cut: range, crossrange
    float xc = 0, yc = 0;                     // point of actions 6 and 9; the peak on return
    float apk = 0;                            // out of action 6: its amplitude
    float wct = 0, dct = 0;                   // cut length, spacing
    float xpv = 0, ypv = 0;                   // cut pivot point
    float ang = 0;                            // cut angle, from crossrange towards range
};

// What an action needs besides the block.
struct pi_surroundings {
    float f0 = 0, df = 0;               // first frequency and step of the data, MHz
    float bw = 0;                       // bandwidth, MHz
    float hclip = 1;                    // high amplitude threshold of the peak scaling
    const plr_kws* polar = nullptr;     // geometry, for action 10
    std::span<const std::int32_t> jary; // stored actions as the journal keeps them, for action 20
};

struct pi_packed {
    std::vector<std::int32_t> record; // empty when refused
    std::string refusal;              // the message to show
    bool too_large = false;           // refused for its size: mode and factors go back to those before
};

// The action record of pip.mode, or why there is none. Makes every check that comes before the processor.
pi_packed pi_pack(const proimag_parms& pip, const pi_surroundings& around);

// A result record taken apart. Which fields are filled depends on `kind`.
struct pi_result {
    enum kind { FAILED, IMAGE, STATUS, DATA, CUT_STORED, EXPORTED, ENDED };
    kind what = FAILED;
    std::string message; // FAILED
    int step = 0;        // of all others
    int mode = 0;        // action the image stands at; else that of the record: 7, 11, 18, 19, 21

    // IMAGE; STATUS without ifx, ify, npk
    int kw = 0, ifx = 0, ify = 0, ksx = 0, ksy = 0;
    int nx = 0, ny = 0;
    float x1 = 0, dx = 0, y1 = 0, dy = 0, ascl = 0;
    int npk = 0, npmx = 0, kscl = 0;
    float apmn = 0, diam = 0;      // STATUS
    std::vector<float> xp, yp, dp; // peaks: position, dot diameter
    std::vector<float> a;          // ny rows of nx amplitudes, the largest 1; all 0 for an empty image

    // What the action itself produced, modes 6, 8 and 9 of IMAGE.
    float xpk = 0, ypk = 0, apk = 0; // mode 6
    int kc = 0;                      // mode 8: cut class
    float c1 = 0, dc = 0;            // first position, spacing
    std::vector<float> cut;          // interleaved complex samples
    int kwr = 0;                     // > 0: the cut leaves the edited box
    float xc = 0, yc = 0;            // mode 9: the point
    std::vector<float> delays;       // nt + 1, microseconds

    int nfp = 0, ntp = 0;             // DATA: with ksx, ksy
    std::vector<float> data;          // ntp rows of nfp complex samples, interleaved
    int nn = 0, ns = 0;               // EXPORTED
    std::vector<std::int32_t> stored; // nn - 1 words
};

// False, with what = FAILED and a message, for a failure and for a record that does not hold together.
bool pi_unpack(std::span<const std::int32_t> out, pi_result& result);

// jary for exported actions (nn > 0): its length, ns, the words, the motion compensation level.
jbuf<std::int32_t> pi_make_jary(const pi_result& exported, int mc_level);

} // namespace norva
