#pragma once
// Text to number and back, with a point as decimal separator whatever the locale.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace norva {

// Reads the number at the start of a text: blanks, a sign, digits with a point, an exponent. Returns how many
// characters were taken, 0 when no number stands there (value then stays). Too large gives infinity, too
// small zero. The words "inf" and "nan" and hexadecimal numbers are no numbers here: "nancy" is a name.
std::size_t prefix_double(std::string_view text, double& value);
// The same for a whole number in decimal; held to the range of int.
std::size_t prefix_int(std::string_view text, int& value);

// The number at the start of a text, 0 when there is none (what atof and atoi do).
double to_double(std::string_view text);
int to_int(std::string_view text);

// The number when the text holds nothing else but blanks around it.
std::optional<double> whole_double(std::string_view text);
std::optional<int> whole_int(std::string_view text);

// As printf "%.*f", "%.*e", "%.*g".
std::string format_fixed(double value, int decimals);
std::string format_exponent(double value, int decimals);
std::string format_general(double value, int digits = 6);
// The shortest text that reads back as the same value.
std::string format_exact(double value);

} // namespace norva
