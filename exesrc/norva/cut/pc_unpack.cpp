// A result record of the cut processor taken apart.
#include "cut/pc_apply.h"

#include "state/record_words.h"

#include <algorithm>

namespace norva {

namespace {

void read_curve(record_reader& in, pc_curve& c) {
    const int n = in.integer();
    c.scale = in.real();
    for (auto* values : {&c.u, &c.a, &c.p, &c.r, &c.q}) *values = in.reals(n);
}

// The action's own words: their number follows from the action.
int action_words(int action) {
    switch (action) {
    case PC_INIT: return 7;
    case PC_WEIGHT: return 2;
    case PC_EDIT: return 1 + PC_MAX_CROSSHAIRS;
    case PC_SUB_SLOPE: return 4;
    case PC_SUB_SPLINE: return 2 + PC_MAX_BREAKS;
    case PC_DEWEIGHT: return 1;
    default: return 0;
    }
}

void read_common(record_reader& in, pc_result& r) {
    read_curve(in, r.cut);
    read_curve(in, r.transform);
    const auto n = std::min<std::size_t>(in.words.size(), action_words(r.mode));
    r.action.assign(in.words.begin(), in.words.begin() + static_cast<std::ptrdiff_t>(n));
}

void read_derivative(record_reader& in, pc_result& r) {
    r.id = in.integer();
    r.kd = in.integer();
    r.kf = in.integer();
    const int nn = in.integer();
    r.axis = in.reals(nn);
    r.first = in.reals(nn);
    if (r.kf > 1) r.second = in.reals(nn);
}

void read_peaks(record_reader& in, pc_result& r) {
    const int nch = in.integer(), npk = r.mode == PC_PEAKS ? nch : 1;
    for (int k = 0; k < npk && in.good; k++) {
        pc_peak pk;
        pk.position = in.real();
        pk.width = in.real();
        pk.skewness = in.real();
        r.peaks.push_back(pk);
    }
    r.crosshairs = in.reals(nch);
}

void read_spline(record_reader& in, pc_result& r) {
    r.ids = in.integer();
    const int nbp = in.integer(), nph = in.integer();
    r.x1p = in.real();
    r.dxp = in.real();
    r.ph = in.reals(nph);
    r.breaks = in.reals(nbp);
}

void read_tsa(record_reader& in, pc_result& r) {
    r.crosshairs = in.reals(2);
    for (float* v : {&r.xj1, &r.xj2, &r.pjp, &r.f1, &r.f2, &r.a1, &r.a2}) *v = in.real();
    in.integer();
    const int nx = in.integer();
    r.x1 = in.real();
    r.dx = in.real();
    r.am = in.reals(nx);
    r.phs = in.reals(nx);
}

} // namespace

bool pc_unpack(std::span<const std::int32_t> out, pc_result& r) {
    r = {};
    record_reader in{out};
    r.step = in.integer();
    r.mode = in.integer();
    if (!in.good || r.step < 0) {
        r.message = record_message(out, PC_MESSAGE_CHARACTERS);
        return false;
    }
    switch (r.mode) {
    case PC_DIFFERENTIATE:
        r.what = pc_result::DERIVATIVE;
        read_derivative(in, r);
        break;
    case PC_PEAKS:
    case PC_PEAK_PAIR:
        r.what = pc_result::PEAKS;
        read_peaks(in, r);
        break;
    case PC_SLOPE:
        r.what = pc_result::SLOPE;
        r.crosshairs = in.reals(2);
        r.p1 = in.real();
        r.p2 = in.real();
        break;
    case PC_SPLINE:
        r.what = pc_result::SPLINE;
        read_spline(in, r);
        break;
    case PC_TSA:
        r.what = pc_result::TSA;
        read_tsa(in, r);
        break;
    case PC_PARALLEL:
    case PC_PERPENDICULAR:
        r.what = pc_result::NEW_CUT;
        r.crosshairs = in.reals(1);
        for (float* v : {&r.wct, &r.dct, &r.xpv, &r.ypv, &r.agl}) *v = in.real();
        break;
    case PC_SHIFT:
    case PC_MOCOMP: {
        r.what = pc_result::DELAYS;
        const std::vector<float> delays = in.reals(in.integer());
        r.delays.assign(delays.begin(), delays.end());
        break;
    }
    case PC_EXIT:
    case PC_REENTRY: r.what = pc_result::ENDED; break;
    default: r.what = pc_result::COMMON; read_common(in, r);
    }
    if (in.good) return true;
    r = {};
    r.message = "Damaged result of the cut processor";
    return false;
}

} // namespace norva
