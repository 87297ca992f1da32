// Small whole-number and frequency helpers.
#include "signal/numbers.h"

#include <climits>
#include <cmath>
#include <initializer_list>
#include <numeric>

namespace norva {

int nint(double x) {
    if (std::isnan(x)) return 0;
    if (x >= INT_MAX) return INT_MAX;
    if (x <= INT_MIN) return INT_MIN;
    return static_cast<int>(std::round(x));
}

int iradx2(int n) {
    int i = 2;
    while (i < n && i < (1 << 30)) i *= 2;
    return i;
}

bool gnum(int num) {
    if (num < 2) return false;
    for (int factor : {2, 3, 5}) {
        while (num % factor == 0) num /= factor;
    }
    return num == 1;
}

int mynino(int num) {
    if (num < 3) return 2;
    while (!gnum(num) && num < INT_MAX) num++;
    return num;
}

int niceno(int num) {
    return mynino(num);
}

float cfreq(float f0, float df, int nf) {
    return static_cast<float>(f0 + 0.5 * (nf - 1.0) * df);
}

int igcd(int m, int n) {
    return std::gcd(m, n);
}

} // namespace norva
