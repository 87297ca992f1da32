#pragma once
// The main window: raw file, window of data, journal position, and the start of each analysis.
//
// A call from a control (wo not null) is ignored while an analysis window is open; a null wo is a call from
// inside the program and passes that gate.

#include <string>

namespace norva {

struct wi_obj;

void filewin_init(); // builds and shows the window, and fills the hooks of the modules below

// The dispatcher. Tags: 1 new raw data file or end of the journal, 2 journal file chosen, 6 range peaks,
// 7 moving window image, 8 range profiles, 9 image, 10 Doppler profiles, 11 Doppler peaks, 12 compensation
// with track data, 13 preparation of a decimation, 14 polar format. Other tags have no effect.
void filewin_cb(wi_obj* wo, int tag);

// Reads the four fields as the window of data: 1, or 0 after a message. Corrected values stand in both cases,
// in user and in the fields; the text is left as typed when only one point was specified. A field that still
// shows what the program put there stands for the exact value behind its text.
int read_numflds();

// Shows the window of data in the fields, in the current style.
void show_numflds();
// The same, but the fourth field shows this number of records; the journal's position 0 needs it.
void show_numflds(int nt_shown);

void chg_epg(wi_obj* wo, int tag);       // edit page: header text or journal listing
void chg_parmstyle(wi_obj* wo, int tag); // parameters in units or in samples
void norva_enable_flds(int enable);      // locks or opens the four fields and the journal position
void show_count();                       // user.count into the journal position
int typed_position();                    // what the journal position field holds
int decimation_factor(int direction);    // 0 time, 1 frequency; at least 1
void reset_decimation_factors();
void filter_raw_files(); // def.fltr has changed
void select_raw_file(const std::string& name);
void select_journal_file(const std::string& name);

// Brings every control's look in step with what it would do now: a control whose handler would ignore the
// click is grey.
void refresh_controls();

// The window's controls, for tests and for internal calls that stand for a control.
struct main_window_controls {
    wi_obj *top, *rdfil, *jfil, *jfld, *write, *save, *epg, *epg_toggle, *style, *numfld[4], *defaults;
    wi_obj* analysis[7]; // by the order of their buttons
    wi_obj *decimate, *decimation[2];
};
const main_window_controls& main_window();

} // namespace norva
