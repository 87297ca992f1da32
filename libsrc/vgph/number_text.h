#pragma once
// Numbers as axis labels show them: no blanks at the edges, a capital E, and never "-0".

#include <string>

namespace norva {

std::string label_fixed(double value, int decimals);    // "%.*lf"
std::string label_exponent(double value, int decimals); // "%.*lE"
std::string label_general(double value, int digits);    // "%.*lG"

} // namespace norva
