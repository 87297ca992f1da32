#pragma once
// Leaving the program, or ending the journal and staying: the quit window and the ".mc" text file.

#include <string>

namespace norva {

struct wi_obj;

void quitwin_init();
bool quit_window_up();

// tag 0 asks; 1 saves and stays; 2 saves and leaves; 3 deletes the journal and leaves; 4 cancels.
void quit_cb(wi_obj* wo, int tag);

// The text of the ".mc" file: the analysis' frame and every correction that is no decimation.
std::string mc_file_text();

} // namespace norva
