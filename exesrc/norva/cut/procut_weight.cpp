// Weightings of the transform, and the edits that leave a new support to weight.
#include "procut_int.h"
#include "signal/fft.h"
#include "signal/vector.h"
#include "signal/weight.h"
#include "state/image_cut.h"

namespace norva {

namespace {

// Width of the main lobe of a point at half power, gates.
constexpr std::array<float, 4> main_lobe = {0.886F, 1.299F, 1.304F, 1.644F};

} // namespace

void transform_to_cut() {
    cut_state& s = cut();
    transf(s.x.data(), s.nx, s.ish, s.c.data(), kss);
    s.shown = false;
}

void cut_to_transform() {
    cut_state& s = cut();
    std::fill(s.c.begin() + 2 * s.nc, s.c.begin() + 2 * s.nx, 0.0F);
    transi(s.x.data(), s.nx, s.ish, s.c.data(), kss);
    s.shown = false;
}

void fill_axis(float* a, int n, float first, float step) {
    for (int k = 0; k < n; k++) a[k] = static_cast<float>(first + static_cast<double>(k) * step);
}

void set_weighting(int lw, int kw1, int kw2) {
    cut_state& s = cut();
    for (cut_real* a : {&s.w, &s.dw}) {
        std::fill_n(a->begin(), kw1 - 1, 0.0F);
        std::fill(a->begin() + kw2, a->begin() + s.nx, 0.0F);
    }
    weight(&s.w[kw1 - 1], &s.dw[kw1 - 1], kw2 - kw1 + 1, lw);
    s.kw1 = kw1;
    s.kw2 = kw2;
    s.lw = lw;
    s.wdth = main_lobe[lw];
}

void change_weighting(int lw, int kw1, int kw2) {
    cut_state& s = cut();
    std::copy_n(s.dw.begin(), s.nx, s.b.begin());
    set_weighting(lw, kw1, kw2);
    // The sum of 1/dw over the support: the weights sum to 1, and dw is 1 at their centre.
    const float restore = 1 / s.w[kw1 - 1 + (kw2 - kw1 + 1) / 2];
    reweigh(s.x.data(), s.b.data(), s.w.data(), s.nx, restore);
    transform_to_cut();
}

bool act_weight(cut_action& run) {
    cut_state& s = cut();
    const int lw = run.integer(1), nch = run.integer(2);
    if (lw < 0 || lw > 3) return run.fail("***Error 101a...Invalid weighting");
    if (s.kin == PC_INIT_1D && lw == 1) return run.fail("***Error 130a");
    if (nch != 0 && nch != 2) return run.fail("***Error 101b...Improper number of crosshairs");
    if (s.moved) return run.fail("***Error 101c...Cannot change weighting");
    int kw1 = s.kw1, kw2 = s.kw2;
    if (nch == 2) {
        kw1 = std::clamp(transform_sample(run.real(3)), 1, s.nx);
        kw2 = std::clamp(transform_sample(run.real(4)), 1, s.nx);
        if (kw2 - kw1 + 1 <= 2) return run.fail("***Error 101c...Processing interval is too short");
    }
    if (!run.accept(nch + 3)) return false;

    change_weighting(lw, kw1, kw2);
    s.kmc = subtracted::none;
    s.il = PC_WEIGHT;
    for (int k = 0; k < 2; k++) run.add(nch == 2 ? run.integer(3 + k) : 0);
    return true;
}

namespace {

struct edit_texts {
    const char *sequence, *beyond;
};

// Sample numbers of the crosshairs of a data edit, rising within 1..n.
bool edit_samples(cut_action& run, int nch, int n, float first, float step, const edit_texts& texts,
                  int* ich) {
    for (int k = 0; k < nch; k++) {
        ich[k] = sample_at(run.real(3 + k), first, step);
        if (k == 0) ich[k] = std::max(ich[k], 1);
        if (k > 0 && ich[k] <= ich[k - 1]) return run.fail(texts.sequence);
    }
    return ich[nch - 1] <= n || run.fail(texts.beyond);
}

} // namespace

// The crosshairs in pairs bound what is kept.
bool act_edit(cut_action& run) {
    cut_state& s = cut();
    const int id = run.integer(1), nch = run.integer(2);
    std::array<int, PC_MAX_CROSSHAIRS> ich{};
    if (nch < 1 || nch > PC_MAX_CROSSHAIRS) return run.fail("***Error 102a...Improper number of crosshairs");
    if (id > 0) {
        constexpr edit_texts texts = {"***Error 102d...Crosshairs not in sequence",
                                      "***Error 102e...Last crosshair > data interval"};
        if (!edit_samples(run, nch, s.nx, s.x1, s.dx, texts, ich.data())) return false;
        const int kw1 = ich[0], kw2 = nch % 2 == 1 ? s.nx : ich[nch - 1];
        if (kw2 - kw1 + 1 <= 2) return run.fail("***Error 102f...Processing interval is too short");
        if (!run.accept(nch + 3)) return false;
        edatc(s.x.data(), s.nx, ich.data(), nch);
        change_weighting(s.lw, kw1, kw2);
        s.edited = true;
    } else {
        constexpr edit_texts texts = {"***Error 102b...Crosshairs not in sequence",
                                      "***Error 102c...Last crosshair > data interval"};
        if (!edit_samples(run, nch, s.nc, s.c1, s.dc, texts, ich.data()) || !run.accept(nch + 3))
            return false;
        edatc(s.c.data(), s.nc, ich.data(), nch);
        cut_to_transform();
        s.kmc = subtracted::none;
    }
    s.id = id;
    s.il = PC_EDIT;
    run.add(nch);
    for (int k = 0; k < nch; k++) run.add(run.integer(3 + k));
    return true;
}

// All amplitudes between two crosshairs become the largest of them, under the weighting.
bool act_unit_amplitude(cut_action& run) {
    cut_state& s = cut();
    const int k1 = std::clamp(transform_sample(run.real(1)), 1, s.nx);
    const int k2 = std::clamp(transform_sample(run.real(2)), 1, s.nx);
    if (k2 <= k1) return run.fail("***Error 107a...Crosshairs not in sequence");
    if (!run.accept(3)) return false;

    std::fill_n(s.x.begin(), 2 * (k1 - 1), 0.0F);
    std::fill(s.x.begin() + 2 * k2, s.x.begin() + 2 * s.nx, 0.0F);
    const curve_scale scale = scale_of(s.x.data(), s.nx);
    set_weighting(s.lw, k1, k2);
    const float centre = s.w[k1 - 1 + (k2 - k1 + 1) / 2];
    equalize(s.x.data(), s.w.data(), s.nx, scale, scale.amplitude / centre);
    transform_to_cut();
    s.edited = true;
    s.kmc = subtracted::none;
    s.il = PC_UNIT_AMPLITUDE;
    return true;
}

} // namespace norva
