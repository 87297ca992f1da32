#pragma once
// Keywords given as text, "NAME=value", as command lines and text files have them.

#include "fileio/zuvfile.h"

#include <string>
#include <string_view>

namespace norva {

// Stores a value under the type that the program reads the name with: numbers for NREC, WFRI, XEX ..., text
// for SIG_TYPE and the like. Under other names a whole number becomes an int, another number a double, and
// anything else a string. An empty value removes the keyword. Returns an empty text, or what is wrong: a
// value that does not fit the name, a text too long to be found again, a full list. The list is unchanged
// then.
std::string put_keyword_text(_zuvfile* file, std::string_view name, std::string_view value);

// A short sentence for a status code of the file layers: "the file is shorter than its head tells".
std::string zuvstatus_text(int status);

} // namespace norva
