#pragma once
// The number and the text that a value of any type stands for.

#include "trelva/value.h"

#include <string>

namespace norva {

double sp_number(const sp_value& val);    // 0.0 for words and values of no type
std::string sp_text(const sp_value& val); // "NULL" for values of no type

// As "%20.10g" with the blanks cut; not-a-number has no sign, which would be an accident of the machine.
std::string sp_number_text(double x);

} // namespace norva
