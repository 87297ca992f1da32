#pragma once
// CDF pattern files as raw data: scan positions stand for records, degrees for seconds. One polarization is
// read at a time; a small window beside the main one chooses it.

#include "app/gpf.h"
#include "app/kwin.h"

#include <string>

namespace norva {

struct wi_obj;

// A CDF file has no texts of its own; these stand in its header text and in files written from it.
extern const raw_texts cdf_texts;
extern const char* const cdf_signal_text;

// The polarization that is read: one of "HH", "HV", "VH", "VV", "LL", "RL", "LR", "RR".
extern std::string poles;

// The reader: first the header, later the data of the polarization `poles` into user.pfdata, which has the
// room for the window. Both read user.rdfile and return false after a message that names what is missing or
// wrong.
bool rd_cdf(header_numbers& numbers);
bool rd_cdf(const data_window& window);

void polwin_init();                     // builds the window, hidden; poles is "HH"
void choose_pol_init();                 // shows it
void choose_pol_leave();                // hides it
void close_choose(wi_obj* wo, int tag); // 0..7 the toggles, 8 "Done"

// An analysis keeps to one polarization, and its journal keeps which: the note of a CDF file's journal is the
// polarization's name, and the toggles are grey while a journal is under way.
std::string pole_note();
void choose_pole(const std::string& note); // a note that names no polarization changes nothing
void refresh_poles();

} // namespace norva
