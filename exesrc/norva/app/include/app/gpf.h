#pragma once
// Raw data input: a file name becomes the parameters gp, the header text of the main window, and the window
// of samples user.pfdata. Files are opened and closed on each call.

#include "app/window_values.h"

#include <string>
#include <vector>

namespace norva {

enum class raw_kind { none, gate, cdf }; // CDF: a pattern file (app/cdf_input.h)
extern raw_kind data_type;               // kind of the file that was read last

// A keyword of the raw file, as the header text shows it.
struct raw_keyword {
    std::string name, value;
    int type; // 1 int, 2 double, 3 string
};

constexpr int KW_MAX = 40; // keywords of one file that are looked at

// The four texts that the file describes itself with.
struct raw_texts {
    std::string data_source, target_type, track_info, mot_comp;
};
extern raw_texts kw_ss;

extern const char* const signal_types[4]; // indexed by gp.sigtype

// Values of the keyword window that stand in for the file's own, while `acc` is set.
extern bool acc;

// Reads the header of user.rdfile: fills gp, user.ksx, user.ksy, user.rh, kw_r0, data_type, and returns the
// header text. Empty on every failure, after its message; user.rdfile is emptied where the file's values
// cannot be used. A file that lacks required keywords opens the keyword window instead of a message.
std::string get_gpf_hdr();

// tag 0: reads the current window (user.nf0 ...) fresh from the file; when data are already loaded, the
// window of the last fresh read is restored and read again. Other tags: cuts the current window out of the
// data in memory, whose first samples and row length are nf0, nt0, nf; they may be decimated or motion
// compensated. On failure user.pfdata is empty, after a message.
void get_gpf_data(int tag, int nf0, int nt0, int nf);

// The window that user.pfdata holds; user's own may be narrower already, until the data are cut to it.
data_window loaded_window();
// The data in memory have become the window that user tells, by a decimation.
void loaded_window_is_users();

// The window of the last fresh read covers this one.
bool fresh_window_covers(const data_window& window);

// One of the keywords that the header text shows in lines of their own, or not at all; in any case.
bool is_known_keyword(const std::string& name);

// Signal type by the first letter of its text; texts that name none are frequency stepping.
int classify_signal(const std::string& text);

// "label" + dots up to column 50 + value + newline.
std::string header_line(const std::string& label, const std::string& value);

} // namespace norva
