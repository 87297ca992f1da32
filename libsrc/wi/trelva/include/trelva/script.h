#pragma once
// Scripts: lines "name = formula", evaluated from top to bottom. ";" outside quotes starts a comment, "-" at
// the start of a line protects the name, "#" starts a command line, which has no effect. Lines without "=",
// without a right part, and empty lines are skipped.

#include "trelva/vars.h"

#include <cstddef>
#include <iosfwd>
#include <string>

namespace norva {

// Characters taken from a line at a time. What stands beyond them is read as the next line would be.
constexpr std::size_t SP_LINE_LENGTH = 180;

// Runs a script. A formula that fails, and a name that may not be redefined, add "Error (line %d): %s" to the
// context's errors; the failed formula's name then holds the error "Bad Value". Lines count from 1 and end in
// LF or CR LF.
void s_process(sp_language& context, std::istream& script);
// The same for a file; false, with nothing done, when it cannot be read.
bool s_process(sp_language& context, const std::string& fname);

} // namespace norva
