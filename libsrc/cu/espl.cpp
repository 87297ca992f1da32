// The evaluated spline: its life in memory, and its value.
#include "cu/espl.h"

#include "espl_int.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <utility>

namespace norva {
namespace {

int esplerror = ZUV_OK;

// prm(i, d) = i!/(i-d)!, the factor that coefficient i gets from d derivatives, 0 for d above i: n rows of n,
// row d from values[d*n] on.
thread_local struct {
    std::size_t n = 0; // the largest ncoe seen
    std::vector<double> values;
} prm;

void calprm(std::size_t n) {
    prm.n = n;
    prm.values.assign(n * n, 0.0);
    std::fill_n(prm.values.begin(), n, 1.0);
    for (std::size_t d = 1; d < n; d++)
        for (std::size_t i = d; i < n; i++)
            prm.values[d * n + i] = static_cast<double>(i - d + 1) * prm.values[(d - 1) * n + i];
}

// The multipliers of derivative d, for coefficients below ncoe.
const double* prm_row(int ncoe, int d) {
    if (static_cast<std::size_t>(ncoe) > prm.n) calprm(static_cast<std::size_t>(ncoe));
    return &prm.values[static_cast<std::size_t>(d) * prm.n];
}

bool ncoe_is_sound(int ncoe) {
    return ncoe >= 1 && ncoe <= ESPL_MAX_NCOE;
}

} // namespace

int espl_status(int status) {
    return esplerror = status;
}

int espl_error() {
    return esplerror;
}

double espl(_espl* e, double t, int ideriv) {
    if (!e || ideriv < 0) {
        espl_status(ZUV_BAD_ARGUMENT);
        return 0.0;
    }
    espl_status(ZUV_OK);
    if (ideriv >= e->ncoe) return 0.0;
    if (!(t >= e->tbrk0 && t < e->tbrk1)) {
        const int status = std::isnan(t)          ? ZUV_BAD_ARGUMENT
                           : e->mode == ESPL_FILE ? espl_load_file(*e, t)
                                                  : espl_load_memory(*e, t);
        if (espl_status(status) != ZUV_OK) return 0.0;
    }
    const double dt = t - e->tbrk0;
    const double* coe = e->coe0.data();
    const double* factor = prm_row(e->ncoe, ideriv);
    double value = 0.0;
    for (int j = e->ncoe - 1; j >= ideriv; j--) value = value * dt + factor[j] * coe[j];
    return value;
}

int espl_load_memory(_espl& e, double t) {
    const int n = static_cast<int>(e.brks.size());
    if (n == 0) return ZUV_BAD_ARGUMENT;
    auto inside = [&](int i) { // the piece from breakpoint i to the next
        return i >= 0 && i + 1 < n && e.brks[static_cast<std::size_t>(i)].time <= t &&
               t < e.brks[static_cast<std::size_t>(i) + 1].time;
    };
    int i = e.ibrk; // in order of time the next piece is that of the upper breakpoint in hand
    if (t < e.t0) {
        i = 0;
    } else if (t >= e.t1) {
        i = n - 1;
    } else if (!inside(i)) {
        auto after = std::ranges::upper_bound(e.brks, t, {}, &_brkpoint::time);
        i = static_cast<int>(after - e.brks.begin()) - 1;
        if (!inside(i)) stop("\nInternal problem in espl.");
    }
    load_from_memory(e, i);
    return ZUV_OK;
}

void load_from_memory(_espl& e, int i) {
    const int last = static_cast<int>(e.brks.size()) - 1;
    e.ibrk = std::min(i + 1, last);
    const _brkpoint& lower = e.brks[static_cast<std::size_t>(i)];
    const _brkpoint& upper = e.brks[static_cast<std::size_t>(e.ibrk)];
    e.tbrk0 = lower.time;
    e.tbrk1 = upper.time;
    e.coe0 = lower.coe;
    e.coe1 = upper.coe;
}

espl_ptr espl_init_for_memory(int nbrks, int ncoe) {
    if (nbrks < 0 || !ncoe_is_sound(ncoe)) {
        espl_status(ZUV_BAD_ARGUMENT);
        return {};
    }
    try {
        _brkpoint empty;
        empty.coe.assign(static_cast<std::size_t>(ncoe), 0.0);
        return espl_init_old(ncoe, std::vector<_brkpoint>(static_cast<std::size_t>(nbrks), empty));
    } catch (const std::bad_alloc&) {
        espl_status(ZUV_NO_MEMORY);
        return {};
    }
}

espl_ptr espl_init_old(int ncoe, std::vector<_brkpoint> brks) {
    auto has_ncoe = [&](const _brkpoint& brk) { return std::ssize(brk.coe) == ncoe; };
    if (!ncoe_is_sound(ncoe) || !std::ranges::all_of(brks, has_ncoe)) {
        espl_status(ZUV_BAD_ARGUMENT);
        return {};
    }
    auto e = std::make_unique<_espl>();
    e->ncoe = ncoe;
    e->brks = std::move(brks);
    if (!e->brks.empty()) espl_rehash(e.get());
    espl_status(ZUV_OK);
    return e;
}

espl_ptr espl_copy(const _espl* e) {
    if (!e || e->mode != ESPL_MEMORY) {
        espl_status(ZUV_BAD_ARGUMENT);
        return {};
    }
    espl_status(ZUV_OK);
    return std::make_unique<_espl>(*e);
}

void espl_free(espl_ptr) {}

int espl_bound(const _espl* e, double& t0, double& t1) {
    if (!e) return espl_status(ZUV_BAD_ARGUMENT);
    t0 = e->t0;
    t1 = e->t1;
    return espl_status(ZUV_OK);
}

int espl_rehash(_espl* e) {
    if (!e) return espl_status(ZUV_BAD_ARGUMENT);
    if (e->mode == ESPL_FILE) return espl_status(espl_rehash_file(*e));
    e->nbrks = static_cast<int>(e->brks.size());
    if (e->brks.empty()) return espl_status(ZUV_BAD_ARGUMENT);
    for (_brkpoint& brk : e->brks) brk.coe.resize(static_cast<std::size_t>(e->ncoe));
    e->t0 = e->brks.front().time;
    e->t1 = e->brks.back().time;
    load_from_memory(*e, 0);
    return espl_status(ZUV_OK);
}

} // namespace norva
