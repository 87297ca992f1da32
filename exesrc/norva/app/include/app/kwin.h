#pragma once
// The keyword window: shown when a gate file lacks a required keyword, so that the user can supply the
// values and have them written into the file.

#include <string>

namespace norva {

struct wi_obj;

// The numbers of a raw file's header, as the file has them: seconds and Hz.
struct header_numbers {
    int nrec = 0, nf = 0, ksx = -1;
    double t0 = 0, wfri = 0, f0 = 0, df = 0, plen = 0;
};

void kwin_build();                           // builds the window, hidden
void kwin_init(const header_numbers& found); // shows the window, preset from what the file has
void kwin_show();                            // the same again, as the user left it
void kwin_leave();                           // hides it
void kwin_cb(wi_obj* wo, int tag);           // 0 cancel, 1 save the keywords and read the header again
int save_kws();                              // writes the values into user.rdfile; 1, or 0 after a message
header_numbers get_kw_vals();                // the window's numbers; gp.sigtype and kw_ss are set as well
std::string kwin_signal_text();              // the selected signal type

} // namespace norva
