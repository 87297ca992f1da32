#pragma once
// The number and the text that a value of any type stands for.

#include "trelva/value.h"

#include <string>

namespace norva {

double sp_number(const sp_value& val);    // 0.0 for words and values of no type
std::string sp_text(const sp_value& val); // "NULL" for values of no type

} // namespace norva
