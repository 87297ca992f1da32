// The window's block into an action record, with the checks that come before the processor.
#include "cut/pc_apply.h"
#include "signal/numbers.h"
#include "state/record_words.h"
#include "state/user.h"
#include "zuvsys/strprintf.h"

#include <algorithm>

namespace norva {

namespace {

constexpr const char* peak_to_cut =
    "Set a blue crosshair to take a perpendicular cut at peak.  Set a red crosshair to take cut at crosshair "
    "position.  Use the middle mouse button to toggle between modes/colors.";
constexpr const char* peak_to_origin =
    "Set a blue crosshair on a peak to shift the peak to the origin in the image.  Set a red crosshair to "
    "shift "
    "that point to the origin in the image.  Use the middle mouse button to toggle between modes/colors.";
constexpr const char* interval = "Set two crosshairs to define an interval.";

struct crosshair_rule {
    int action, least, most;
    const char* refusal;
};
constexpr crosshair_rule rules[] = {
    {PC_EDIT, 2, PC_MAX_CROSSHAIRS, "Set at least two crosshairs."},
    {PC_SUB_SLOPE, 2, 2, interval},
    {PC_PHASE_JUMP, 2, 2, "Set two crosshairs on either side of the jump."},
    {PC_ZERO_PHASE, 2, 2, interval},
    {PC_UNIT_AMPLITUDE, 2, 2, interval},
    {PC_PEAKS, 1, PC_MAX_CROSSHAIRS, "Set at least one crosshair for peak parameters."},
    {PC_PEAK_PAIR, 2, 2, interval},
    {PC_SLOPE, 2, 2, interval},
    {PC_TSA, 2, 2, "Set two crosshairs; one at each scatterer location!"},
    {PC_PERPENDICULAR, 1, 1, peak_to_cut},
    {PC_SHIFT, 1, 1, peak_to_origin},
};

const char* crosshair_refusal(int action, int nch) {
    for (const crosshair_rule& r : rules) {
        if (r.action == action && (nch < r.least || nch > r.most)) return r.refusal;
    }
    return nullptr;
}

std::vector<float> sorted_crosshairs(const procut_parms& pc) {
    if (!pc.xhrs) return {};
    const auto& x = *pc.xhrs;
    const int n = std::clamp(x.cnt, 0, static_cast<int>(x.xval.size()));
    std::vector<float> values(x.xval.begin(), x.xval.begin() + n);
    std::ranges::sort(values);
    return values;
}

// An inverted edit keeps what lies outside the pairs: the edges of the signal join in.
void add_edges(const procut_parms& pc, int domain, std::vector<float>& ch) {
    if (domain > 0) {
        ch.insert(ch.begin(), pc.xu0);
        ch.push_back(pc.xu0 + pc.xdu);
    } else {
        ch.insert(ch.begin(), pc.u0);
        ch.push_back(pc.u0 + pc.du);
    }
}

std::string pack_spline(const pc_spline* spline, record_packer& p) {
    if (!spline || spline->ph.empty()) return "You must FIT SPLINE first!";
    if (!spline->phase_curve) return "You must use a different TRELVA style!";
    if (spline->breaks.size() > PC_MAX_BREAKS)
        return strprintf("Too many break points -- must be <=%d", PC_MAX_BREAKS);
    p.ints({spline->domain, static_cast<int>(spline->breaks.size()), static_cast<int>(spline->ph.size())});
    p.reals({spline->x1, spline->dx});
    p.reals(spline->ph);
    p.reals(spline->breaks);
    return {};
}

// One-dimensional data must fit after the fourfold padding, and a cut into the arrays.
std::string pack_signal(const procut_parms& pc, bool one_dimensional, record_packer& p) {
    const int most = one_dimensional ? PC_MAX_RAW : PC_MAX_SAMPLES;
    if (pc.n < 1 || pc.n > most || !pc.data)
        return strprintf("Number of samples of a cut must be 1 to %d.", most);
    p.ints({pc.lw, pc.kc, pc.n});
    p.reals({pc.c1, pc.dc});
    p.reals(std::span(pc.data, 2 * static_cast<std::size_t>(pc.n)));
    return {};
}

} // namespace

pc_surroundings pc_surroundings_of_user() {
    pc_surroundings around;
    around.f0 = user.f0;
    around.df = user.df;
    around.nf = user.nf;
    around.bw = user.bw;
    return around;
}

pc_packed pc_pack(const procut_parms& pc, const pc_session& session, const pc_surroundings& around) {
    pc_packed packed;
    record_packer p{packed.record};
    auto refused = [](std::string text) { return pc_packed{{}, std::move(text)}; };
    std::vector<float> ch = sorted_crosshairs(pc);
    const auto nch = static_cast<int>(ch.size());
    const int domain = pc.xhrs ? pc.xhrs->domain : 0, invert = pc.xhrs ? pc.xhrs->invert : 0;
    if (const char* text = crosshair_refusal(pc.mode, nch)) return refused(text);

    const float fc = cfreq(around.f0, around.df, around.nf);
    p.ints({pc.mode});
    switch (pc.mode) {
    case PC_INIT:
    case PC_INIT_1D:
        if (std::string text = pack_signal(pc, pc.mode == PC_INIT_1D, p); !text.empty()) return refused(text);
        break;
    case PC_WEIGHT:
        if (session.init30 && pc.lw == 1) return refused("Circular weighting not available for 1-D data!");
        p.ints({pc.lw, nch});
        p.reals(ch);
        break;
    case PC_EDIT:
        if (invert == 1) add_edges(pc, domain, ch);
        p.ints({domain, static_cast<int>(ch.size())});
        p.reals(ch);
        break;
    case PC_SUB_SLOPE:
        p.ints({domain});
        p.reals({ch[0], ch[1], pc.p1, pc.p2});
        break;
    case PC_PHASE_JUMP: p.reals({ch[0], ch[1], pc.pjmp}); break;
    case PC_ZERO_PHASE:
    case PC_UNIT_AMPLITUDE: p.reals(ch); break;
    case PC_DIFFERENTIATE: p.ints({pc.id, pc.kd, pc.kflag}); break;
    case PC_DEWEIGHT:
    case PC_PREVIOUS: p.ints({pc.dwt}); break;
    case PC_PEAKS:
        p.ints({nch});
        p.reals(ch);
        break;
    case PC_PEAK_PAIR:
        p.reals(ch);
        p.ints({0});
        break;
    case PC_SLOPE:
        p.ints({domain});
        p.reals(ch);
        break;
    case PC_SPLINE:
        if (std::string text = pack_spline(around.spline, p); !text.empty()) return refused(text);
        break;
    case PC_TSA: p.reals({ch[0], ch[1], pc.p1, pc.p2, pc.pjmp}); break;
    case PC_PARALLEL: p.reals({pc.c1}); break;
    case PC_PERPENDICULAR:
        p.reals(ch);
        p.ints({invert});
        break;
    case PC_SHIFT:
        p.reals({ch[0], fc, around.bw});
        p.ints({invert});
        break;
    case PC_MOCOMP:
        if (!session.mc_ok) return refused("Must subtract phase slope or phase spline first!");
        p.reals({fc, around.bw});
        break;
    case PC_BACKUP: p.ints({around.nbu}); break;
    default: break;
    }
    return packed;
}

} // namespace norva
