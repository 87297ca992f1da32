// Application of one delay history to the raw data.
#include "mocomp/mocomp.h"

#include "phase.h"
#include "signal/parallel.h"
#include "signal/processor.h"
#include "zuvsys/stop.h"

#include <array>
#include <cstddef>
#include <vector>

namespace norva {
namespace {

constexpr int samples_of_a_chunk = 16384;

// Weights of the cubic through positions -1, 0, 1, 2 at p:
//   -p(p-1)(p-2)/6, (pp-1)(p-2)/2, -p(p+1)(p-2)/2, p(pp-1)/6
std::array<double, 4> cubic_weights(double p) {
    return {-p * (p - 1) * (p - 2) / 6, (p * p - 1) * (p - 2) / 2, -p * (p + 1) * (p - 2) / 2,
            p * (p * p - 1) / 6};
}

// Delays at the records j-1, j, j+1, j+2 (from 0), carried on beyond the ends by a parabola.
std::array<double, 4> delays_around(const double* d, int j, int nt) {
    if (nt == 1) return {2 * d[0] - d[1], d[0], d[1], 2 * d[1] - d[0]};
    double before = j > 0 ? d[j - 1] : 3 * d[0] - 3 * d[1] + d[2];
    double after = j < nt - 1 ? d[j + 2] : 3 * d[nt] - 3 * d[nt - 1] + d[nt - 2];
    return {before, d[j], d[j + 1], after};
}

phase_runner runner_of_this_machine() {
#if defined(__x86_64__)
    if (has_avx2()) return turn_record_avx2;
#endif
    return turn_record_base;
}

} // namespace

void mocomp(float* x, int nf, int nt, float f1, float df, float rh, const double* d) {
    if (!(rh >= 0 && rh <= 1)) stop("STOP IN MOCOMP");
    if (nf < 1) return;
    const std::size_t padded = (static_cast<std::size_t>(nf) + phase_step - 1) / phase_step * phase_step;
    std::vector<double> tables(5 * padded);
    double* of[5];
    for (int k = 0; k < 5; k++) of[k] = tables.data() + k * padded;
    for (int i = 0; i < nf; i++) {
        of[4][i] = i * static_cast<double>(df) + f1;
        const std::array<double, 4> w = cubic_weights(static_cast<double>(i) * rh / nf);
        for (int k = 0; k < 4; k++) of[k][i] = w[k];
    }
    const phase_tables record = {nf, of[4], {of[0], of[1], of[2], of[3]}};

    static const phase_runner turn = runner_of_this_machine();
    parallel_chunks(nt, 1 + samples_of_a_chunk / nf, [&](int first, int last) {
        for (int j = first; j < last; j++)
            turn(record, delays_around(d, j, nt).data(), x + 2 * static_cast<std::size_t>(j) * nf);
    });
}

} // namespace norva
