// Correction of a delay history for the time at which each frequency was measured.
#include "mocomp/mocomp.h"

#include "zuvsys/stop.h"

#include <vector>

namespace norva {

void rngcor_get(float wfri, float bw, float fc, float plen, double* tr, double* ts) {
    *tr = static_cast<double>(wfri) * 1e6;
    *ts = bw == 0 ? 0.0 : (static_cast<double>(fc) / bw + 0.5) * plen * 1e6;
}

// T + S,  S = -(T/2 + TS) * sum j=1..ndrv of (-TS)^(j-1) T^(j);  the first power is 1 for TS = 0 too.
void rngcor(double* t, int nt, double tr, double ts, int ndrv, const double*, int) {
    if (nt > RNGCOR_MAX_NT) stop("STOP IN RNGCOR");
    if (nt < RNGCOR_MIN_NT) stop("stop in rngcor");
    std::vector<double> series(nt), derivative(nt);
    double factor = 1.0;
    for (int j = 1; j <= ndrv; j++) {
        drv(t, derivative.data(), tr, j, nt);
        for (int i = 0; i < nt; i++) series[i] += factor * derivative[i];
        factor *= -ts;
    }
    for (int i = 0; i < nt; i++) t[i] -= (t[i] * 0.5 + ts) * series[i];
}

} // namespace norva
