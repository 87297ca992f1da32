// Splines made from other splines, and times for plotting one. Each is a changed copy.
#include "cu/espl.h"

#include "espl_int.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>

namespace norva {
namespace {

constexpr std::int64_t most_plot_times = 1 << 28;

bool in_memory(const _espl* e) {
    return e && e->mode == ESPL_MEMORY;
}

espl_ptr refused() {
    espl_status(ZUV_BAD_ARGUMENT);
    return {};
}

// A spline whose breakpoints have just been made. One without any is as good as it will be.
espl_ptr finished(espl_ptr e) {
    if (!e->brks.empty()) espl_rehash(e.get());
    espl_status(ZUV_OK);
    return e;
}

// A continuity as many derivatives higher; a number from a file may stand at the end of its range.
int smoother(int ncont, int by) {
    return static_cast<int>(std::clamp<std::int64_t>(
        std::int64_t{ncont} + by, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

std::vector<double> times_of(const _espl& e) {
    std::vector<double> times;
    for (const _brkpoint& brk : e.brks) times.push_back(brk.time);
    return times;
}

} // namespace

espl_ptr espl_mult(const _espl* e, double factor) {
    espl_ptr made = espl_copy(e);
    if (!made) return {};
    for (_brkpoint& brk : made->brks)
        for (double& c : brk.coe) c *= factor;
    return finished(std::move(made));
}

espl_ptr espl_plus(const _espl* e, double c) {
    espl_ptr made = espl_copy(e);
    if (!made) return {};
    for (_brkpoint& brk : made->brks) brk.coe[0] += c;
    return finished(std::move(made));
}

espl_ptr espl_integrate(const _espl* e, double c) {
    if (!in_memory(e) || e->ncoe >= ESPL_MAX_NCOE) return refused();
    espl_ptr made = espl_copy(e);
    made->ncoe++;
    double v = c; // value at the breakpoint
    for (std::size_t i = 0; i < made->brks.size(); i++) {
        _brkpoint& brk = made->brks[i];
        brk.ncont = smoother(brk.ncont, +1);
        for (std::size_t j = 1; j < brk.coe.size(); j++) brk.coe[j] /= static_cast<double>(j + 1);
        brk.coe.insert(brk.coe.begin(), v);
        const double dt = i + 1 < made->brks.size() ? made->brks[i + 1].time - brk.time : 0.0;
        v = 0.0;
        for (std::size_t j = brk.coe.size(); j-- > 0;) v = v * dt + brk.coe[j];
    }
    return finished(std::move(made));
}

espl_ptr espl_diff(const _espl* e) {
    if (!in_memory(e) || e->ncoe < 2) return refused();
    espl_ptr made = espl_copy(e);
    made->ncoe--;
    for (_brkpoint& brk : made->brks) {
        brk.ncont = smoother(brk.ncont, -1);
        brk.coe.erase(brk.coe.begin());
        for (std::size_t j = 0; j < brk.coe.size(); j++) brk.coe[j] *= static_cast<double>(j + 1);
    }
    return finished(std::move(made));
}

espl_ptr espl_add(_espl* e1, _espl* e2) {
    espl_ptr sum = espl_mergebrks(e1, e2, -1e30, 1e30);
    if (!sum) return {};
    for (_brkpoint& brk : sum->brks) {
        double factorial = 1.0;
        for (int j = 0; j < sum->ncoe; j++) {
            if (j > 1) factorial *= j;
            brk.coe[static_cast<std::size_t>(j)] =
                (espl(e1, brk.time, j) + espl(e2, brk.time, j)) / factorial;
        }
    }
    return finished(std::move(sum));
}

espl_ptr espl_mergebrks(const _espl* e1, const _espl* e2, double lo, double hi) {
    if (!in_memory(e1) || !in_memory(e2)) return refused();
    std::vector<double> times;
    std::ranges::merge(times_of(*e1), times_of(*e2), std::back_inserter(times));
    times.erase(std::unique(times.begin(), times.end()), times.end());
    std::erase_if(times, [=](double t) { return !(lo <= t && t <= hi); });
    if (times.size() < 2) return refused();
    espl_ptr merged = espl_init_for_memory(static_cast<int>(times.size()), std::max(e1->ncoe, e2->ncoe));
    if (!merged) return {};
    for (std::size_t i = 0; i < times.size(); i++) merged->brks[i].time = times[i];
    return finished(std::move(merged));
}

std::vector<float> espl_plttimes(const _espl* e, int fact) {
    std::vector<float> times;
    const std::int64_t nb = in_memory(e) && fact > 0 ? std::int64_t{e->ncoe} * fact : 0;
    if (nb == 0 || e->brks.empty() || nb > most_plot_times / std::ssize(e->brks)) {
        espl_status(ZUV_BAD_ARGUMENT);
        return times;
    }
    for (std::size_t i = 0; i + 1 < e->brks.size(); i++) {
        const double start = e->brks[i].time, step = (e->brks[i + 1].time - start) / static_cast<double>(nb);
        for (std::int64_t k = 0; k < nb; k++)
            times.push_back(static_cast<float>(start + static_cast<double>(k) * step));
    }
    espl_status(ZUV_OK);
    return times;
}

} // namespace norva
