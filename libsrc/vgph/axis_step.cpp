// Choice of an axis step. See axis_step.h.

#include "axis_step.h"

#include "number_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace norva {

val_parts getfm(double val) {
    val_parts p;
    if (val == 0 || !std::isfinite(val)) return p;
    p.tens = static_cast<int>(std::floor(std::log10(std::abs(val))));
    p.mult = std::pow(10.0, p.tens);
    p.frac = std::abs(val) / p.mult;
    // log10 rounds: next to a power of ten it may name the wrong one.
    if (p.frac >= 10) {
        p.tens++;
        p.mult = std::pow(10.0, p.tens);
        p.frac = std::abs(val) / p.mult;
    } else if (p.frac < 1) {
        p.tens--;
        p.mult = std::pow(10.0, p.tens);
        p.frac = std::abs(val) / p.mult;
    }
    if (p.mult == 0 || !std::isfinite(p.frac)) return {}; // next to the smallest numbers there are
    p.mult = std::copysign(p.mult, val);
    return p;
}

double adj_precision(double val, int dig, int dir) {
    const val_parts p = getfm(val);
    if (p.frac == 0) return val;
    const double unit = std::pow(10.0, -dig);
    return (p.frac + ((dir > 0) == (p.mult > 0) ? unit : -unit)) * p.mult;
}

int cal_tics(double t0, double t1, double inc, std::array<double, 50>& vals) {
    if (inc == 0) {
        vals[0] = (t0 + t1) * 0.5;
        return 1;
    }
    const double low = std::min(t0, t1), high = std::max(t0, t1);
    const double k1 = std::floor(t1 / inc) + 2;
    int n = 0;
    for (double k = std::floor(t0 / inc) - 2; k <= k1 && n < static_cast<int>(vals.size()); k++) {
        const double v = k * inc + 0.0; // + 0.0: never the negative zero
        if (v >= low && v <= high) vals[n++] = v;
    }
    return n;
}

static void one_value(_vgaxisparm& a, double value) {
    a.nospan = 1;
    a.nlabs = 1;
    a.labvals[0] = value;
    a.incval = 0;
}

void cal_inc(_vgaxisparm& a, int nreqlabs) {
    nreqlabs = std::clamp(nreqlabs, 2, 45);
    a.nospan = a.axiserr = a.incsign = 0;
    a.errstr.clear();
    a.lim0j = a.lim0;
    a.lim1j = a.lim1;
    if (a.lim0 == a.lim1) return one_value(a, a.lim0);

    const int up = a.lim1 > a.lim0 ? 1 : -1;
    a.lim0j = adj_precision(a.lim0, 13, -up);
    a.lim1j = adj_precision(a.lim1, 13, up);
    const double span = a.lim1j - a.lim0j;
    const double avg = (a.lim0j + a.lim1j) * 0.5;
    if (std::abs(avg / span) >= 1e11) {
        a.lim1 = a.lim0j = a.lim1j = a.lim0;
        return one_value(a, a.lim0);
    }
    const val_parts raw = getfm(span / nreqlabs);
    if (std::abs(raw.tens) > 990) {
        a.axiserr = 1;
        a.errstr = "Floating point problems.  Unable to get rawinc in cal_tic.";
        return one_value(a, a.lim0 * 0.5 + a.lim1 * 0.5);
    }

    int best_count = 0;
    for (int step : {1, 2, 5, 10}) {
        std::array<double, 50> vals;
        const int count = cal_tics(a.lim0j, a.lim1j, step * raw.mult, vals);
        const bool closer = std::abs(count - nreqlabs) < std::abs(best_count - nreqlabs);
        if (step == 1 || (count >= 2 && closer)) {
            best_count = count;
            a.inctype = step;
        }
    }
    a.incval = a.inctype * raw.mult;
    a.inctens = raw.tens;
    if (a.inctype == 10) {
        a.inctype = 1;
        a.inctens++;
    }
    a.incsign = raw.mult < 0;
    a.nlabs = cal_tics(a.lim0j, a.lim1j, a.incval, a.labvals);
}

std::string tic_text(double value, int inctens) {
    const double size = std::abs(value);
    if (inctens >= 0) return size > 1e8 ? label_exponent(value, 7) : label_fixed(value, 0);
    int nten = size < 1 ? 0 : static_cast<int>(std::log10(size)) + 1;
    nten += value < 0 ? 3 : 2;
    const int nfrac = -inctens;
    return nten + nfrac > 12 ? label_exponent(value, 7) : label_fixed(value, nfrac);
}

} // namespace norva
