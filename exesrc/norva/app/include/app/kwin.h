#pragma once
// The keyword window: shown when a gate file lacks a required keyword, so that the user can supply the
// values and have them written into the file.

#include <string>

namespace norva {

struct wi_obj;

void kwin_build();                 // builds the window, hidden
void kwin_init();                  // shows the window, preset from gp as far as it has been read
void kwin_cb(wi_obj* wo, int tag); // 0 cancel, 1 save the keywords and read the header again
int save_kws();                    // writes the values into user.rdfile; 1, or 0 after a message
void get_kw_vals();                // the window's values into gp (f0, df in Hz) and kw_ss
std::string kwin_signal_text();    // the selected signal type

} // namespace norva
