// Text to number and back without the locale.
#include "zuvsys/numparse.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <limits>

namespace norva {

namespace {

bool is_blank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t blanks_at(std::string_view text, std::size_t i) {
    while (i < text.size() && is_blank(text[i])) i++;
    return i;
}

// Where the digits of a number start: behind blanks and a sign. npos when no digit (or point and digit)
// stands there.
std::size_t number_start(std::string_view text, bool point, bool& negative) {
    std::size_t i = blanks_at(text, 0);
    negative = i < text.size() && text[i] == '-';
    if (negative || (i < text.size() && text[i] == '+')) i++;
    if (i < text.size() && is_digit(text[i])) return i;
    if (point && i + 1 < text.size() && text[i] == '.' && is_digit(text[i + 1])) return i;
    return std::string_view::npos;
}

// A number that does not fit a double: is it too large (rather than too small)? Its leading digit decides, by
// its distance from the point and the exponent.
bool too_large(std::string_view number) {
    long place = 0; // decimal exponent of the first digit that is not 0
    bool behind = false, found = false;
    std::size_t i = 0;
    for (; i < number.size() && (is_digit(number[i]) || number[i] == '.'); i++) {
        if (number[i] == '.')
            behind = true;
        else if (found || number[i] != '0') {
            if (found && !behind) place++;
            if (!found && behind) place--;
            found = true;
        } else if (behind)
            place--;
    }
    int exponent = 0;
    if (i < number.size()) prefix_int(number.substr(i + 1), exponent);
    return place + exponent > 0;
}

std::string formatted(double value, std::chars_format format, int precision) {
    // 1.8e308 in fixed notation has 309 digits ahead of the point.
    std::string out(static_cast<std::size_t>(precision) + 330, '\0');
    auto [end, error] = std::to_chars(out.data(), out.data() + out.size(), value, format, precision);
    out.resize(static_cast<std::size_t>(end - out.data()));
    return out;
}

int held(int decimals) {
    return decimals < 0 ? 0 : decimals > 1100 ? 1100 : decimals;
}

template <class T>
std::optional<T> whole(std::string_view text, std::size_t (*prefix)(std::string_view, T&)) {
    T value{};
    std::size_t n = prefix(text, value);
    if (n == 0 || blanks_at(text, n) != text.size()) return std::nullopt;
    return value;
}

} // namespace

std::size_t prefix_double(std::string_view text, double& value) {
    bool negative = false;
    std::size_t start = number_start(text, true, negative);
    if (start == std::string_view::npos) return 0;
    const char* first = text.data() + start;
    double magnitude = 0.0;
    auto [end, error] = std::from_chars(first, text.data() + text.size(), magnitude);
    if (error == std::errc::result_out_of_range) {
        std::string_view number(first, static_cast<std::size_t>(end - first));
        magnitude = too_large(number) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    value = negative ? -magnitude : magnitude;
    return static_cast<std::size_t>(end - text.data());
}

std::size_t prefix_int(std::string_view text, int& value) {
    bool negative = false;
    std::size_t i = number_start(text, false, negative);
    if (i == std::string_view::npos) return 0;
    constexpr long long limit = std::numeric_limits<int>::max();
    long long magnitude = 0;
    for (; i < text.size() && is_digit(text[i]); i++)
        magnitude = std::min(magnitude * 10 + (text[i] - '0'), limit + 1);
    value = static_cast<int>(negative ? -magnitude : std::min(magnitude, limit));
    return i;
}

double to_double(std::string_view text) {
    double value = 0.0;
    prefix_double(text, value);
    return value;
}

int to_int(std::string_view text) {
    int value = 0;
    prefix_int(text, value);
    return value;
}

std::optional<double> whole_double(std::string_view text) {
    return whole<double>(text, prefix_double);
}

std::optional<int> whole_int(std::string_view text) {
    return whole<int>(text, prefix_int);
}

std::string format_fixed(double value, int decimals) {
    return formatted(value, std::chars_format::fixed, held(decimals));
}

std::string format_exponent(double value, int decimals) {
    return formatted(value, std::chars_format::scientific, held(decimals));
}

std::string format_general(double value, int digits) {
    return formatted(value, std::chars_format::general, held(digits));
}

std::string format_exact(double value) {
    std::array<char, 32> out{};
    auto [end, error] = std::to_chars(out.data(), out.data() + out.size(), value);
    return {out.data(), end};
}

} // namespace norva
