#pragma once
// What the files of the cut processor share: its private state, and one action under way.

#include "cut/curve.h"
#include "cut/procut.h"
#include "signal/numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace norva {

using cut_complex = std::array<float, 2 * PC_MAX_SAMPLES>;
using cut_real = std::array<float, PC_MAX_SAMPLES>;

// One domain as it is shown. Its real and imaginary part are the samples, scaled.
struct cut_display {
    cut_real u;    // axis
    cut_real a, p; // amplitude, largest 1; phase in cycles, at the peak within half a cycle of 0
    curve_scale scale;
};

// A phase spline as measured; ids is -1 while there is none to subtract.
struct cut_spline {
    int ids = -1; // domain: 0 image, 1 transform
    int nph = 0;  // samples
    float x1 = 0, dx = 0;
    cut_real ph; // cycles
    int nbp = 0;
    std::array<float, PC_MAX_BREAKS> breaks;
};

// What was subtracted, for motion compensation.
enum class subtracted { none, slope, slope_in_image, spline, spline_in_image };

struct cut_state {
    // The grids and the signal.
    int nc = 0, nx = 0;
    float c1 = 0, dc = 1, x1 = 0, dx = 1;
    int ish = 0; // sample of the cut, from 0, that is its origin
    cut_complex c, x;

    cut_display cut, transform;
    bool shown = false;   // these two belong to c and x
    int kc1 = 0, kc2 = 0; // first and last sample of the cut that is not zero, less one and as it is

    cut_real w, dw;       // weighting of the transform and what takes it out, zero outside the support
    int kw1 = 1, kw2 = 1; // first and last sample of the support, from 1
    int lw = 0;
    float wdth = 1;     // main lobe of a point with this weighting, gates
    bool moved = false; // the support was moved: the weighting cannot be changed

    int kin = PC_INIT; // the initial action
    int kc = 0;        // class of the cut
    int ls = 1;        // samples a gate
    int nw = 0;        // of 1-D data: raw samples

    subtracted kmc = subtracted::none;
    bool edited = false; // samples of the transform are lost: its phase is no longer that of the data
    double slope = 0;    // subtracted in the transform so far, gates
    float psla = 0;      // accumulated slope
    cut_spline spline;

    int kdd = 0, kps = 0, id = 0;

    // The stored actions in cutj are run through up to here.
    int is = 0;             // step
    int il = 0;             // last action
    int np = 0;             // word of the next stored action
    int end = 0;            // words that are stored
    bool given = false;     // they are those that the image gave back, unchanged
    bool void_step = false; // the action of step `is` left no signal and is not stored

    cut_complex b, d; // scratch of one action
};

cut_state& cut();

// One action under way: its words, and what it produces.
struct cut_action {
    std::span<const std::int32_t> words; // from the action's number on
    std::span<std::int32_t> out;
    bool fresh = false;
    bool quiet = false;                              // a replay goes on behind it: nobody wants the result
    const char* message = "***Action not activated"; // should it fail
    int length = 0;                                  // of its record
    int own = 0;                                     // > 0: words of a result of its own from out(0) on
    std::array<std::int32_t, 2 + PC_MAX_BREAKS + 8> extra; // words behind the common result
    int nextra = 0;

    int integer(int i) const { return static_cast<std::size_t>(i) < words.size() ? words[i] : 0; }
    float real(int i) const { return std::bit_cast<float>(integer(i)); }
    bool fail(const char* text) {
        message = text;
        return false;
    }
    void add(std::int32_t v) { extra[nextra++] = v; }
    void add(float v) { extra[nextra++] = std::bit_cast<std::int32_t>(v); }
    void put(std::int32_t v) {
        if (!quiet) out[own] = v;
        own++;
    }
    void put(float v) { put(std::bit_cast<std::int32_t>(v)); }
    // For the kernels of cut/curve.h, which take the words there for what they are.
    float* floats_at(int word) { return reinterpret_cast<float*>(&out[word]); }
    void put(const float* v, int n) {
        if (!quiet) std::memcpy(&out[own], v, sizeof(float) * static_cast<std::size_t>(n));
        own += n;
    }
    // A result of its own: the step goes to its first word when it is known.
    void begin_own(int action) {
        own = 0;
        put(0);
        put(action);
    }
    // To be called after all checks, before anything changes: the record has `n` words, of which a fresh one
    // may leave out those from `least` on, and there is room to store them.
    bool accept(int n, int least);
    bool accept(int n) { return accept(n, n); }
};

using cut_handler = bool (*)(cut_action&);

// The signal as it is shown, from c and x. False with message 195 when there is none.
bool show_cut(cut_action& run);

// The same, and the words of the common result.
bool put_common(cut_action& run);

// The action that follows, stored or fresh. By number; null for those that are not activated.
cut_handler handler_of(int action);

// The initial actions.
bool act_init(cut_action& run);
bool act_init_1d(cut_action& run);
// Weighting and data edits.
bool act_weight(cut_action& run);
bool act_edit(cut_action& run);
bool act_unit_amplitude(cut_action& run);
// Phase.
bool act_sub_slope(cut_action& run);
bool act_sub_spline(cut_action& run);
bool act_phase_jump(cut_action& run);
bool act_zero_phase(cut_action& run);
// What is shown.
bool act_differentiate(cut_action& run);
bool act_restore(cut_action& run);
bool act_deweight(cut_action& run);
bool act_previous(cut_action& run);
// Measurements.
bool act_peaks(cut_action& run);
bool act_peak_pair(cut_action& run);
bool act_slope(cut_action& run);
bool act_spline(cut_action& run);
bool act_tsa(cut_action& run);
// New cuts and motion compensation.
bool act_parallel(cut_action& run);
bool act_perpendicular(cut_action& run);
bool act_shift(cut_action& run);
bool act_mocomp(cut_action& run);

// Sample number, from 1, of a position on an axis; positions far outside stay far outside.
inline int sample_at(float position, float first, float step) {
    const double k = (static_cast<double>(position) - first) / step;
    return nint(std::clamp(k, -1e6, 1e6)) + 1;
}
inline int cut_sample(float position) {
    return sample_at(position, cut().c1, cut().dc);
}
inline int transform_sample(float position) {
    return sample_at(position, cut().x1, cut().dx);
}

// x from c, or c from x, after one of them has changed.
void transform_to_cut();
void cut_to_transform();

// The weighting over the samples kw1..kw2 of the transform, from 1, instead of the present one.
void set_weighting(int lw, int kw1, int kw2);

// Takes the present weighting out of the transform and brings in another, which leaves the level at its
// centre.
void change_weighting(int lw, int kw1, int kw2);

// a(k) = first + k*step, k from 0, without adding up roundings.
void fill_axis(float* a, int n, float first, float step);

// The samples that the transform shows: its own, or those without their weighting, in s.b.
const float* shown_transform();

// The transform x as it is shown, and its scale.
bool show_transform(cut_action& run, const float* x, const curve_arrays& to, curve_scale* scale);

} // namespace norva
