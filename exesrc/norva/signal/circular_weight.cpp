// The circular Taylor weight, its projection, and both applied to a complex array.
#include "signal/weight.h"

#include "signal/parallel.h"
#include "zuvsys/stop.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace norva {
namespace {

using std::numbers::pi;

constexpr float sidelobes_db = 40.0F;
constexpr int equal_sidelobes = 5;
constexpr int intervals = 100; // of both tables

// Zeros of J1(pi x).
constexpr std::array<double, 14> root = {1.2196701, 2.2331309, 3.2383151, 4.2410631, 5.2427640,
                                         6.2439318, 7.2447600, 8.2453947, 9.2458925, 10.246293,
                                         11.246624, 12.246900, 13.247131, 14.247333};

double polynomial(const std::array<double, 7>& c, double x) {
    double sum = 0;
    for (auto it = c.rbegin(); it != c.rend(); ++it) sum = sum * x + *it;
    return sum;
}

// Value at the position h >= 0, in intervals, of a table with one entry more than it needs.
float interpolate(const float* table, float h) {
    auto i = static_cast<int>(h);
    h -= static_cast<float>(i);
    return (1 - h) * table[i] + h * table[i + 1];
}

struct radial_tables {
    std::array<float, intervals + 2> w, sqt;
    radial_tables() {
        taycnb(sidelobes_db, equal_sidelobes, intervals + 1, w.data());
        w[intervals + 1] = 0.0F;
        for (int i = 0; i < intervals + 2; i++) sqt[i] = static_cast<float>(std::sqrt(i / double{intervals}));
    }
};

struct projection_table {
    std::array<float, intervals + 1> w;
    // Trapezoid rule from the centre outward: the first term counts half.
    projection_table() {
        for (int i = 0; i < intervals; i++) {
            const double u = i / double{intervals};
            double sum = 0;
            for (int j = 0; j < intervals; j++) {
                const double v = j / double{intervals};
                sum += (j == 0 ? 0.5 : 1.0) * cirwght(static_cast<float>(u * u + v * v)) / intervals;
            }
            w[i] = static_cast<float>(sum);
        }
        w[intervals] = 0.0F;
    }
};

// Squared distances from element 1 with wrap-around, in units of the extent: 0, 1/n, ... 1/2, ... -1/n.
std::vector<float> squared_offsets(int n) {
    std::vector<float> squares(n);
    for (int i = 0; i < n; i++) {
        float x = static_cast<float>(i) / static_cast<float>(n);
        if (x > 0.5F) x -= 1;
        squares[i] = x * x;
    }
    return squares;
}

enum class direction { weight, unweight };

void apply_circular(float* a, int nx, int ny, direction way) {
    if (nx < 1 || ny < 1) return;
    const std::vector<float> x2 = squared_offsets(nx), y2 = squared_offsets(ny);
    parallel_chunks(ny, 1 + 32768 / nx, [&](int first, int end) {
        for (int j = first; j < end; j++) {
            float* row = a + 2 * static_cast<std::size_t>(j) * nx;
            for (int i = 0; i < nx; i++) {
                float w = cirwght(4 * (x2[i] + y2[j]));
                if (way == direction::unweight && w > 0) w = 1 / w;
                row[2 * i] *= w;
                row[2 * i + 1] *= w;
            }
        }
    });
}

} // namespace

double besj0(double x) {
    x = std::fabs(x);
    if (x <= 3) {
        double t = x / 3;
        return polynomial({1.0, -2.2499997, 1.2656208, -0.3163866, 0.0444479, -0.0039444, 0.0002100}, t * t);
    }
    double t = 3 / x;
    double f = polynomial(
        {0.79788456, -0.00000077, -0.00552740, -0.00009512, 0.00137237, -0.00072805, 0.00014476}, t);
    double theta =
        x + polynomial(
                {-0.78539816, -0.04166397, -0.00003954, 0.00262573, -0.00054125, -0.00029333, 0.00013558}, t);
    return f * std::cos(theta) / std::sqrt(x);
}

void taycnb(float slrdb, int nbar, int n, float* w) {
    if (nbar > 15) stop("STOP IN TAYCNB");
    const double slr = std::pow(10.0, slrdb * 0.05);
    const double a = std::log(slr + std::sqrt(slr * slr - 1)) / pi;
    const double asq = a * a;
    const int terms = nbar - 1;
    auto zero = [&](double j) { return asq + (j - 0.5) * (j - 0.5); };
    // For nbar = 15 the scale needs the root after the last of the table; far out they are 1/4 above the
    // integers, less 3/(8 pi^2) over that place (McMahon's expansion).
    const double last_place = nbar + 0.25;
    const double last =
        nbar < 15 ? (nbar > 0 ? root[nbar - 1] : 0) : last_place - 3 / (8 * pi * pi * last_place);
    const double sigsq = last * last / zero(nbar);

    std::array<double, 14> f{};
    double wnorm = 1;
    for (int i = 0; i < terms; i++) {
        double num = 1, den = 1;
        for (int j = 0; j < terms; j++) {
            num *= 1 - root[i] * root[i] / (sigsq * zero(j + 1));
            if (j != i) den *= 1 - (root[i] / root[j]) * (root[i] / root[j]);
        }
        f[i] = num / den / besj0(pi * root[i]);
        wnorm -= f[i];
    }
    for (int i = 0; i < n; i++) {
        const double x = n > 1 ? i / (n - 1.0) : 0.0;
        double value = 1;
        for (int j = 0; j < terms; j++) value -= f[j] * besj0(x * pi * root[j]);
        w[i] = static_cast<float>(value / wnorm);
    }
}

float cirwght(float rsq) {
    static const radial_tables tables;
    if (!(rsq <= 1.0F)) return 0.0F;
    const float r = interpolate(tables.sqt.data(), intervals * std::fmax(rsq, 0.0F));
    return interpolate(tables.w.data(), intervals * r);
}

void diawght(double first, double step, int n, float* w) {
    static const projection_table table;
    for (int k = 0; k < n;) {
        const double position = first + k * step, r = intervals * std::fabs(position);
        if (!(r < intervals)) {
            w[k++] = 0.0F;
            continue;
        }
        // All positions that lie on the same line of the table.
        const auto i = static_cast<int>(r);
        const double rise = static_cast<double>(table.w[i + 1]) - table.w[i];
        const double start = table.w[i] + (r - i) * rise,
                     slope = (position < 0 ? -1 : 1) * rise * intervals * step;
        const double left = (position < 0 ? r - i : i + 1 - r) / (intervals * step); // to the end of the line
        const int count = 1 + static_cast<int>(std::clamp(left, 0.0, n - k - 1.0));
        for (int j = 0; j < count; j++) w[k + j] = static_cast<float>(start + j * slope);
        k += count;
    }
}

float diawght(float r) {
    float w = 0;
    diawght(std::fabs(r), 0, 1, &w);
    return w;
}

void wght2d(float* a, int nx, int ny, int kw) {
    if (kw == 0) return;
    if (kw > 1) stop("STOP IN WGHT2D");
    apply_circular(a, nx, ny, direction::weight);
}

void dwght2d(float* a, int nx, int ny, int kw) {
    if (kw == 0) return;
    if (kw > 1) stop("STOP IN DWGHT2D");
    apply_circular(a, nx, ny, direction::unweight);
}

} // namespace norva
