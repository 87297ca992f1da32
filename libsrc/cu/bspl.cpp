// The fit: breakpoints, knots, normal equations, solution, pieces.
#include "bspl_int.h"
#include "gen/banded_system.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace norva {
namespace {

constexpr double before_all = -1e30; // earlier than any breakpoint or datum

std::string last_error;

bool fail(bspltype& fit, const char* text) {
    fit.errstr = text;
    return false;
}

bool bspl_get_brks(bspltype& fit) {
    double last = before_all;
    for (int i = 0; i < fit.mxbrk; i++) {
        double time = 0.0;
        int ncont = 0;
        if (!(*fit.brk_cb)(i, time, ncont)) continue;
        if (!(time > last) || std::isinf(time)) return fail(fit, "Breakpoint times out of order.");
        _brkpoint& brk = fit.espl->brks[static_cast<std::size_t>(fit.nbrks++)];
        brk.time = last = time;
        brk.ncont = ncont;
    }
    fit.espl->brks.resize(static_cast<std::size_t>(fit.nbrks));
    fit.espl->nbrks = fit.nbrks;
    return fit.nbrks >= 2;
}

bool bspl_mk_knots(bspltype& fit) {
    const std::vector<_brkpoint>& brks = fit.espl->brks;
    const auto ends = static_cast<std::size_t>(fit.ncoe);
    fit.knots.assign(ends, brks.front().time);
    for (std::size_t i = 1; i + 1 < brks.size(); i++) {
        const std::int64_t copies = std::int64_t{fit.ncoe} - brks[i].ncont - 1;
        if (copies < 1 || copies > fit.ncoe) {
            fit.errstr = strprintf("Invalid breakpoint continuity at %20.11E.", brks[i].time);
            return false;
        }
        fit.knots.insert(fit.knots.end(), static_cast<std::size_t>(copies), brks[i].time);
    }
    fit.knots.insert(fit.knots.end(), ends, brks.back().time);
    fit.nknots = static_cast<int>(fit.knots.size());
    fit.nequ = fit.nknots - fit.ncoe;
    return true;
}

// Adds one point to the normal equations: products of its k basis values, the first of index f, into the
// upper half of the band.
void add_point(bspltype& fit, std::size_t f, const double* b, double y) {
    const auto k = static_cast<std::size_t>(fit.ncoe), w = 2 * k - 1;
    for (std::size_t i = 0; i < k; i++) {
        fit.bary[f + i] += b[i] * y;
        double* diagonal = &fit.qary[(f + i) * w + k - 1];
        for (std::size_t j = i; j < k; j++) diagonal[j - i] += b[i] * b[j];
    }
}

void mirror_band(bspltype& fit) {
    const auto k = static_cast<std::size_t>(fit.ncoe), w = 2 * k - 1, n = static_cast<std::size_t>(fit.nequ);
    for (std::size_t r = 0; r < n; r++)
        for (std::size_t j = 0; j + 1 < k && r + j + 1 < n; j++)
            fit.qary[(r + j + 1) * w + k - 2 - j] = fit.qary[r * w + k + j];
}

// The matrix is regular exactly when each basis function can be given a datum of its own at which it is above
// 0 (Schoenberg and Whitney). Taking for each function, in order, the first datum left over finds such a
// choice whenever there is one. The pivots alone do not tell: rounding seldom leaves them at 0.
bool bspl_form_matrix(bspltype& fit) {
    const int k = fit.ncoe;
    const auto n = static_cast<std::size_t>(fit.nequ);
    fit.qary.assign(n * static_cast<std::size_t>(2 * k - 1), 0.0);
    fit.bary.assign(n, 0.0);
    const double first = fit.espl->brks.front().time, end = fit.espl->brks.back().time;
    double last = before_all;
    int ileft = k - 1;
    int served = 0; // basis functions with a datum
    bspl_basis state;
    std::array<double, BSPL_MAX_NCOE> b{};
    for (int i = 0; i < fit.mxdat; i++) {
        double x = 0.0, y = 0.0;
        if (!(*fit.dat_cb)(i, x, y)) continue;
        if (!(x >= first && x <= end)) continue;
        if (!(x > last)) return fail(fit, "X values out of order.");
        last = x;
        while (ileft < fit.nequ - 1 && x >= fit.knots[static_cast<std::size_t>(ileft) + 1]) ileft++;
        const int f = ileft - k + 1;
        bspl_vn(state, fit.knots.data(), k, 1, x, ileft, b.data());
        add_point(fit, static_cast<std::size_t>(f), b.data(), y);
        if (served >= f && served <= ileft && b[static_cast<std::size_t>(served - f)] > 0.0) served++;
    }
    mirror_band(fit);
    return served == fit.nequ || fail(fit, "Fit failure! (Singular matrix)");
}

bool bspl_solve(bspltype& fit) {
    fit.aary.assign(static_cast<std::size_t>(fit.nequ), 0.0);
    const bool solved = solve_banded_system(fit.qary.data(), fit.bary.data(), fit.aary.data(), fit.nequ,
                                            fit.ncoe - 1, fit.ncoe - 1);
    if (solved && std::ranges::all_of(fit.aary, [](double a) { return std::isfinite(a); })) return true;
    return fail(fit, "Fit failure! (Singular matrix)");
}

// Taylor coefficients of the spline at each breakpoint. The last one has no interval of its own and carries
// on the one before it.
void bspl_to_pp(bspltype& fit) {
    bspl_dr(fit, fit.ncoe);
    std::vector<_brkpoint>& brks = fit.espl->brks;
    for (std::size_t i = 0; i + 1 < brks.size(); i++) {
        std::vector<double>& coe = brks[i].coe;
        bspl_ev(fit, brks[i].time, fit.ncoe, coe.data());
        double factorial = 1.0;
        for (std::size_t j = 1; j < coe.size(); j++) {
            factorial *= static_cast<double>(j);
            coe[j] /= factorial;
        }
    }
    const _brkpoint& before = brks[brks.size() - 2];
    brks.back().coe = before.coe;
    tranpp(brks.back().coe.data(), fit.ncoe, brks.back().time - before.time);
}

bool run(bspltype& fit) {
    if (fit.ncoe < 1) return fail(fit, "NCOE must be larger than zero.");
    if (fit.ncoe > BSPL_MAX_NCOE) return fail(fit, "NCOE is too Large.");
    fit.espl = espl_init_for_memory(fit.mxbrk, fit.ncoe);
    if (!fit.espl) return fail(fit, "Unable to init espl (internal prob?).");
    if (!bspl_get_brks(fit) || !bspl_mk_knots(fit) || !bspl_form_matrix(fit) || !bspl_solve(fit))
        return false;
    bspl_to_pp(fit);
    espl_rehash(fit.espl.get());
    return true;
}

} // namespace

espl_ptr bspl_fit(int ncoe, int mxdat, int mxbrk, const bspl_dat_cb& dat_cb, const bspl_brk_cb& brk_cb) {
    bspltype fit;
    fit.ncoe = ncoe;
    fit.mxdat = mxdat;
    fit.mxbrk = mxbrk;
    fit.dat_cb = &dat_cb;
    fit.brk_cb = &brk_cb;
    bool fitted = false;
    try {
        fitted = run(fit);
    } catch (const std::bad_alloc&) { // more breakpoints than memory
    }
    if (fitted) return std::move(fit.espl);
    last_error = fit.errstr.empty() ? "Unknown error in B-spline fit." : fit.errstr;
    return {};
}

std::string bspl_get_error() {
    return std::exchange(last_error, {});
}

} // namespace norva
