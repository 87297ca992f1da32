// Compact text of a number.
#include "zuvsys/numtext.h"

#include "zuvsys/cstrings.h"
#include "zuvsys/numparse.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace norva {

namespace {

// Ten texts in turn, each of at most Size - 1 characters.
template <int Size> struct ring {
    std::array<std::array<char, Size>, 10> text{};
    std::size_t at = 0;

    const char* put(const std::string& s, int limit) {
        at = (at + 1) % text.size();
        return c_strncpy(text[at].data(), s.c_str(), limit + 1);
    }
};

// Cuts trailing zeros of the fraction and leaves one digit behind the point; an exponent stays.
std::string trimmed(const std::string& s) {
    std::size_t point = s.find('.');
    if (point == std::string::npos) return s;
    std::size_t end = std::min(s.find_first_of("eE"), s.size());
    std::size_t last = s.find_last_not_of('0', end - 1);
    std::string mantissa = s.substr(0, last + 1);
    if (last == point) mantissa += '0';
    return mantissa + s.substr(end);
}

std::string compact(double value, int exponent_decimals, int fixed_decimals) {
    double d = std::fabs(value);
    if (d == 0.0) return "0.0";
    return trimmed(d < 1e-06 || d > 1e+06 ? format_exponent(value, exponent_decimals)
                                          : format_fixed(value, fixed_decimals));
}

} // namespace

const char* c_sfmtd(double dd) {
    static ring<30> texts;
    return texts.put(compact(dd, 14, 12), 29);
}

const char* c_sfmtf(double ff) {
    static ring<30> texts;
    return texts.put(compact(static_cast<float>(ff), 6, 5), 29);
}

const char* c_sfmti(int ii) {
    static ring<20> texts;
    return texts.put(std::to_string(ii), 18);
}

} // namespace norva
