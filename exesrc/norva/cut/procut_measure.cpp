// Measurements. They return a result of their own and leave the signal as it is.
#include "cut/scatterer.h"
#include "procut_int.h"
#include "signal/fft.h"
#include "signal/peak.h"
#include "signal/solve.h"
#include "state/image_cut.h"

#include <cmath>
#include <numbers>

namespace norva {

namespace {

const float half_power = std::sqrt(0.5F);

// Position, width and skewness of the peak at the fractional sample pk, from 1.
void put_peak(cut_action& run, float pk) {
    const cut_state& s = cut();
    float left = 0, right = 0;
    const float width = pkwdth(s.cut.a.data(), s.nc, nint(pk), half_power, &left, &right);
    run.put((pk - 1) * s.dc + s.c1);
    run.put(width * s.dc / s.wdth);
    run.put(left > 0 ? right / left : 0.0F);
}

} // namespace

bool act_peaks(cut_action& run) {
    cut_state& s = cut();
    const int nch = run.integer(1);
    if (nch < 1 || nch > PC_MAX_CROSSHAIRS) return run.fail("***Error 114...Improper number of crosshairs");
    if (!run.accept(nch + 2) || !show_cut(run)) return false;
    std::array<float, PC_MAX_CROSSHAIRS> peaks{};
    for (int k = 0; k < nch; k++) {
        const int at = std::clamp(cut_sample(run.real(2 + k)), 1, s.nc);
        peaks[k] = pkpos(s.cut.a.data(), s.nc, at);
        if (!(peaks[k] > 0)) return run.fail("***Error 114...Invalid crosshair position");
    }
    run.begin_own(PC_PEAKS);
    run.put(nch);
    for (int k = 0; k < nch; k++) put_peak(run, peaks[k]);
    for (int k = 0; k < nch; k++) run.put(run.integer(2 + k));
    s.il = PC_PEAKS;
    return true;
}

bool act_peak_pair(cut_action& run) {
    cut_state& s = cut();
    const float ch1 = run.real(1), ch2 = run.real(2);
    if (!(ch2 > ch1)) return run.fail("***Error 115a...Crosshairs not in ascending order");
    const int k1 = std::clamp(cut_sample(ch1), 1, s.nc), k2 = std::clamp(cut_sample(ch2), 1, s.nc);
    if (k2 - k1 < 3) return run.fail("***Error 115b...Crosshair interval is too short");
    // Its record is one word longer than what it holds.
    if (!run.accept(4, 3) || !show_cut(run)) return false;
    const float pk = pkloc(&s.cut.a[k1 - 1], k2 - k1 + 1);
    if (!(pk > 0)) return run.fail("***Error 115c...No peak within crosshair interval");
    run.begin_own(PC_PEAK_PAIR);
    run.put(2);
    put_peak(run, static_cast<float>(k1 - 1) + pk);
    run.put(ch1);
    run.put(ch2);
    s.il = PC_PEAK_PAIR;
    return true;
}

// The straight line through the shown phase between two crosshairs, which move to the samples there.
bool act_slope(cut_action& run) {
    cut_state& s = cut();
    const int id = run.integer(1);
    const bool transform = id > 0;
    const int n = transform ? s.nx : s.nc;
    const float first = transform ? s.x1 : s.c1, step = transform ? s.dx : s.dc;
    if (!(run.real(3) > run.real(2))) return run.fail("***Error 116a...Crosshairs not in ascending order");
    const int k1 = std::clamp(sample_at(run.real(2), first, step), 1, n);
    const int k2 = std::clamp(sample_at(run.real(3), first, step), 1, n);
    // One sample has no slope; in the image two are refused as well.
    if (k1 >= (transform ? k2 : k2 - 1)) return run.fail("***Error 116b...Crosshairs not far enough apart");
    if (!run.accept(4) || !show_cut(run)) return false;
    std::array<float, 2> line{};
    const cut_display& from = transform ? s.transform : s.cut;
    bstfit(&from.p[k1 - 1], k2 - k1 + 1, 2, line.data());
    run.begin_own(PC_SLOPE);
    run.put(from.u[k1 - 1]);
    run.put(from.u[k2 - 1]);
    run.put(line[0]);
    run.put(static_cast<float>(k2 - k1) * line[1] + line[0]);
    s.id = id;
    s.il = PC_SLOPE;
    return true;
}

bool act_spline(cut_action& run) {
    cut_state& s = cut();
    const int nbp = run.integer(2), nph = run.integer(3);
    if (nph < 1 || nph > PC_MAX_SAMPLES || nbp < 0 || nbp > PC_MAX_BREAKS)
        return run.fail("***Error 117...Spline improperly defined");
    if (!run.accept(nph + nbp + 6)) return false;
    cut_spline& p = s.spline;
    p.ids = run.integer(1);
    p.nbp = nbp;
    p.nph = nph;
    p.x1 = run.real(4);
    p.dx = run.real(5);
    std::memcpy(p.ph.data(), &run.words[6], sizeof(float) * static_cast<std::size_t>(nph));
    for (int k = 0; k < nbp; k++) p.breaks[k] = run.real(6 + nph + k);
    run.begin_own(PC_SPLINE);
    for (int k = 1; k < run.length; k++) run.put(run.integer(k));
    s.id = p.ids;
    s.il = PC_SPLINE;
    return true;
}

namespace {

// The samples of the transform that hold the band, on an axis of one cycle: -0.5 is sample `first`, from 0.
struct band {
    int first, samples;
    double place(double sample) const { return (sample - first) / samples - 0.5; }
};

band data_band() {
    const cut_state& s = cut();
    if (s.kin == PC_INIT_1D) return {0, s.nw};
    return {s.nx / 2 - s.nx / (2 * s.ls), s.nx / s.ls};
}

// The sum of the two scatterers over the support, as the cut would show it: weighted, limited to the extent
// of the cut, and deweighted.
bool show_model(cut_action& run, const band& at, std::array<float, 2> f, std::array<float, 2> amplitude,
                std::array<float, 2> phase, const curve_arrays& shown) {
    cut_state& s = cut();
    const int sign = kss > 0 ? -1 : 1;
    for (int j : {0, 1}) {
        float* to = j == 0 ? s.b.data() : s.d.data();
        for (int k = 0; k < s.nx; k++) {
            to[2 * k] = amplitude[j];
            to[2 * k + 1] = 0;
        }
        turn_line(to, s.nx, sign * f[j] / at.samples,
                  sign * (f[j] * at.place(0) + phase[j] / (2 * std::numbers::pi)));
    }
    for (int k = 0; k < 2 * s.nx; k++) s.b[k] += s.d[k];
    if (s.kc1 == 0 && s.kc2 == s.nx) { // nothing to be cleared
        reweigh(s.b.data(), s.dw.data(), s.w.data(), s.nx, 1);
    } else {
        weigh(s.b.data(), s.w.data(), s.nx, s.b.data());
        transf(s.b.data(), s.nx, s.ish, s.d.data(), kss);
        std::fill(s.d.begin(), s.d.begin() + 2 * s.kc1, 0.0F);
        std::fill(s.d.begin() + 2 * s.kc2, s.d.begin() + 2 * s.nx, 0.0F);
        transi(s.b.data(), s.nx, s.ish, s.d.data(), kss);
        weigh(s.b.data(), s.dw.data(), s.nx, s.b.data());
    }
    curve_scale scale;
    return show_transform(run, s.b.data(), shown, &scale);
}

} // namespace

bool act_tsa(cut_action& run) {
    cut_state& s = cut();
    if (s.kdd <= 0) return run.fail("***Error 118...TSA Measurement requires deweighting");
    const band at = data_band();
    if (at.samples < 3) return run.fail("***Error 118...TSA Measurement requires three samples");
    if (!run.accept(6) || !show_cut(run)) return false;

    // Sample numbers within the band, from 1.
    auto number = [&](int i) {
        return std::clamp((static_cast<double>(run.real(i)) - s.x1) / s.dx - at.first, -1e6, 1e6) + 1;
    };
    const int itrans = kss > 0 ? -1 : 1;
    float* phase = s.d.data();
    for (int k = 0; k < at.samples; k++)
        phase[k] = static_cast<float>(itrans * 2 * std::numbers::pi * s.transform.p[at.first + k]);
    std::array<float, 2> f{}, amplitude{}, phi{};
    int ierr = 0;
    scatinta1(&s.transform.a[at.first], phase, at.samples, 0, nint(number(1)), nint(number(2)),
              1 - 1.0F / static_cast<float>(at.samples), "H", "Y", &ierr, -0.5F, itrans,
              static_cast<float>(number(3)), static_cast<float>(number(4)), run.real(5), &f[0], &f[1],
              &amplitude[0], &amplitude[1], &phi[0], &phi[1]);
    for (float v : {f[0], f[1], amplitude[0], amplitude[1]}) {
        if (!std::isfinite(v)) return run.fail("***Error 118...No two scatterers at these positions");
    }
    const curve_arrays model = {s.d.data(), s.d.data() + s.nx};
    if (!show_model(run, at, f, amplitude, phi, model)) return false;

    run.begin_own(PC_TSA);
    for (int k = 1; k <= 5; k++) run.put(run.integer(k));
    for (float v : {f[0], f[1], amplitude[0], amplitude[1]}) run.put(v);
    run.put(0);
    run.put(s.nx);
    run.put(s.x1);
    run.put(s.dx);
    run.put(model.am, s.nx);
    run.put(model.ph, s.nx);
    s.il = PC_TSA;
    return true;
}

} // namespace norva
