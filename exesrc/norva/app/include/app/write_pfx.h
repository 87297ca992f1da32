#pragma once
// The output data file: the data in memory, or those of an edited image, as a new raw data file, and beside
// it a text file with the same content, which norva_fmt turns back into a gate file.

#include <string>

namespace norva {

struct wi_obj;

void writewin_init();                   // builds the window "WRITE" opens, hidden
void write_pfx_cb(wi_obj* wo, int tag); // 0 cancel, 1 show the window, 2 write the file it names

// Writes the gate file `fname` and the text file rootname(fname) + ".asc". While the image window is open the
// data are those that write_pfx_out received last; otherwise user.pfdata. Failures are told by popmsg and
// leave existing files as they were.
void write_pfx(const std::string& fname);

} // namespace norva
