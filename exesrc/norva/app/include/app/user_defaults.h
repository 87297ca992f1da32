#pragma once
// The user defaults: their file and their window.
//
// The ".dflt" file is text, one value a line: the flag that asks for loading at program start, the filter of
// the raw data selector, then every number of the record in its order. It does not hold the file's name.

#include "state/defaults.h"

#include <string>

namespace norva {

struct wi_obj;

extern int dflt_autoload_flag; // load the file at program start

// Finds the first ".dflt" file, by name, in the current folder, or failing that in HOME. Its name goes into
// d.fname; its values are taken when its flag is set, the initial values otherwise.
void dflt_autoload(defaults& d);

// str "w" writes def, "r" reads into def: all of it or, after "Unable to open file!", nothing. Returns 1 or
// 0.
int rw_dflt_file(const std::string& fname, const char* str);

// The text of a file and back. False, with nothing changed, when a line is missing or no number.
std::string defaults_text(const defaults& d, int autoload);
bool read_defaults_text(const std::string& text, defaults& d, int& autoload);

void dfltwin_init();
// 0 hide, 1 show, 2 read the file in the selector, 3 write it, 4 flip the page, 100 toggle the flag.
void dflt_cb(wi_obj* wo, int tag);

} // namespace norva
