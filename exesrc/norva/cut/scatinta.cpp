// Two scatterers from the phase between two nulls.
#include "cut/scatterer.h"
#include "signal/weight.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <utility>
#include <vector>

namespace norva {

namespace {

using std::numbers::pi;

constexpr int MOMENT_POINTS = 100; // of an integral over the band or over the part between the nulls

// Phase that a weaker scatterer of the relative amplitude a adds, when it stands at the angle theta from the
// stronger one.
double added_phase(double a, double theta) {
    return std::atan2(a * std::sin(theta), 1 + a * std::cos(theta));
}

// Slope of the least squares line through the phases y at the positions x, cycles a unit; 0 for one point.
double line_slope(std::span<const float> x, std::span<const float> y) {
    if (x.size() < 2) return 0;
    const double middle = 0.5 * (static_cast<double>(x.front()) + x.back());
    double sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (std::size_t k = 0; k < x.size(); k++) {
        const double u = x[k] - middle;
        sx += u;
        sy += y[k];
        sxx += u * u;
        sxy += u * y[k];
    }
    const auto n = static_cast<double>(x.size());
    const double spread = n * sxx - sx * sx;
    return spread > 0 ? (n * sxy - sx * sy) / spread / (2 * pi) : 0;
}

// The largest amplitude with the weighting taken out.
float largest_amplitude(const float* amp, int npts, const char* deweight, const char* dew) {
    float largest = 0;
    const char kind = *dew == 'Y' ? '\0' : *deweight;
    switch (kind) {
    case 'H':
    case 'h':
    case 'S': {
        int ierr = 0;
        deham2(1, npts, npts, amp, 1, npts, "H", &ierr, 1, npts, &largest);
        return kind == 'S' ? largest : 0.54F * largest;
    }
    case 'a':
    case 'A': detay2(1, npts, npts, amp, deweight, 1, npts, 1, npts, &largest); return 0.61F * largest;
    case 't':
    case 'T': detay2(1, npts, npts, amp, deweight, 1, npts, 1, npts, &largest); return largest;
    default: return *std::max_element(amp, amp + npts);
    }
}

} // namespace

float alpha(float a, float omega, float phi, float start, float end, int n) {
    if (n < 1) return 0;
    const double dt = (static_cast<double>(end) - start) / n;
    double sum = 0;
    for (int k = 0; k < n; k++) {
        const double t = start + (k + 0.5) * dt;
        sum += added_phase(a, omega * t + phi) * t * dt;
    }
    return static_cast<float>(sum);
}

// d is half a cycle less than the distance from the estimate, so that its whole part names the branch. Most
// phases need the turns that the one before needed.
float readjp(float ph, phase_estimate& estimate) {
    double nearest = ph + estimate.turns;
    if (!(std::fabs(nearest - estimate.est) < 0.999 * pi)) {
        const double d = (static_cast<double>(ph) - estimate.est) / (2 * pi) - 0.5;
        const double part = std::fabs(d) < 1e9 ? d - static_cast<int>(d) : 0;
        nearest = (part < 0 ? part + 0.5 : part - 0.5) * 2 * pi + estimate.est;
        estimate.turns = 2 * pi * std::round((nearest - ph) / (2 * pi));
    }
    estimate.est += static_cast<float>(estimate.ctau * (nearest - estimate.est));
    return static_cast<float>(nearest);
}

// Sums are over the phase in the sign of the axis: a scatterer at f turns it by +2 pi f t.
//   S      1/(T2-T1), distance of the two scatterers: a null follows after each full turn of one about the
//   other theta  2 pi S (t - T1) + pi in one case, its negative in the other: the weaker one's angle; pi at
//   the nulls A1     slope that the weaker one adds between the nulls over the fitted part, in units of S.
//   With u = -1..1
//          over that part and theta = pi G u it is 3/(2 pi G) times the first moment of the added phase
//   FCOMP  slope of a line over the whole band: that of the stronger one plus 12/(2 pi) times the first
//   moment
// In case 1 the weaker one stands below the stronger, in case 2 above.
void scatinta1(const float* amp, const float* phase, int npts, float dcval, int itau1, int itau2,
               float biglen, const char* deweight, const char* dew, int* ierr, float tim0, int itrans,
               float tj1, float tj2, float jump, float* f1, float* f2, float* ampstr, float* ampwk,
               float* phi1, float* phi2) {
    *f1 = *f2 = *ampstr = *ampwk = *phi1 = *phi2 = 0;
    *ierr = npts < 3 ? 1 : 0;
    if (*ierr != 0) return;

    const double spacing = biglen / (npts - 1.0);
    auto position = [&](double sample) { return (sample - 1) * spacing + tim0; };
    std::vector<float> x(npts), y(npts);
    phase_estimate estimate;
    for (int k = 0; k < npts; k++) {
        x[k] = static_cast<float>(position(k + 1));
        y[k] = static_cast<float>(itrans) * readjp(phase[k], estimate);
    }
    const double aslope = line_slope(x, y);

    const double a = std::fabs(std::sin(pi * jump));
    double t1 = position(tj1), t2 = position(tj2), tau1 = position(itau1), tau2 = position(itau2);
    if (t1 > t2) std::swap(t1, t2);
    if (tau1 > tau2) std::swap(tau1, tau2);
    // The samples between: none, one or more.
    const double tolerance = 0.001 * spacing;
    const auto begin = std::lower_bound(x.begin(), x.end(), static_cast<float>(tau1 - tolerance));
    const auto end = std::upper_bound(begin, x.end(), static_cast<float>(tau2 + tolerance));
    const std::span<const float> dumx(begin, end), dumy(y.begin() + (begin - x.begin()), dumx.size());
    const double phslp = line_slope(dumx, dumy) - dcval;

    const double scatsep = 1 / (t2 - t1), g = (tau2 - tau1) / (t2 - t1);
    double a1 = 0;
    if (a != 0 && g != 0)
        a1 = 1.5 / (pi * g) *
             alpha(static_cast<float>(a), static_cast<float>(pi * g), 0, -1, 1, MOMENT_POINTS);

    // side -1 is case 1, side +1 case 2: where the weaker one stands. What it adds has the sign of its side.
    const double omega = 2 * pi * scatsep;
    const double bend = a == 0 ? 0
                               : 6 / pi *
                                     alpha(static_cast<float>(a), static_cast<float>(omega),
                                           static_cast<float>(pi - t1 * omega), -0.5F, 0.5F, MOMENT_POINTS);
    auto compared = [&](int side) {
        const double strong = phslp - side * scatsep * a1;
        return strong + side * bend;
    };
    const int side = std::fabs(compared(-1) - aslope) < std::fabs(compared(1) - aslope) ? -1 : 1;
    const double strong = phslp - side * scatsep * a1, weak = strong + side * scatsep;
    *f1 = static_cast<float>(strong);
    *f2 = static_cast<float>(weak);

    // The phase of the stronger one from the middle of the part between the nulls; the weaker one is opposite
    // to it at a null.
    double first = 0;
    if (!dumx.empty()) {
        const std::size_t middle = dumx.size() / 2;
        const double t = dumx[middle];
        first = dumy[middle] - side * added_phase(a, omega * (t - t1) + pi) - 2 * pi * strong * t;
    }
    *phi1 = static_cast<float>(std::remainder(first, 2 * pi));
    *phi2 = static_cast<float>(std::remainder(first + pi + 2 * pi * (strong - weak) * t1, 2 * pi));

    const double ampmax = largest_amplitude(amp, npts, deweight, dew);
    *ampstr = static_cast<float>(ampmax / (1 + a));
    *ampwk = static_cast<float>(*ampstr * a);
}

} // namespace norva
