// What the main window holds: its controls, their look, and what they show. The handlers are in
// main_handlers.cpp.
#include "app/main_window.h"

#include "app/cdf_input.h"
#include "app/decimation.h"
#include "app/gpf.h"
#include "app/messages.h"
#include "app/quit.h"
#include "app/user_defaults.h"
#include "app/window_values.h"
#include "app/write_pfx.h"
#include "journal/journal.h"
#include "main_window_int.h"
#include "mocomp/polar_window.h"
#include "state/calls.h"
#include "state/defaults.h"
#include "state/run.h"
#include "state/user.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>

namespace norva {

static main_window_controls win;
std::string ehdr;

static bool fields_open = false;

// What the four fields show: their text and the samples that stand behind it.
static struct {
    std::array<std::string, 4> text;
    std::array<int, 4> samples{};
} shown;

struct field_words {
    const char* label[2]; // by style
    const char* help;
};
static constexpr field_words fields[4] = {
    {{"Start Freq (MHz):", "First Freq Sample:"}, "help:norva:first freq sample/start freq"},
    {{"Bandwidth (MHz):", "# of Freq Samples:"}, "help:norva:# of freq samples/bandwidth"},
    {{"Start Time (sec):", "First Time Sample:"}, "help:norva:first time sample/start time"},
    {{"Dwell (sec):", "# of Time Samples:"}, "help:norva:# of time samples/dwell"},
};

// The buttons that open analyses. Only those whose window stands are shown.
struct analysis_button {
    const char* text;
    int tag;
    const char* tip;
};
static constexpr analysis_button analyses[] = {
    {"Range Prof", 8, "Range profiles of the window of data"},
    {"Doppler Prof", 10, "Doppler profiles of the signal at range 0"},
    {"Image", 9, "Image of the window of data"},
    {"Polar Format", 14, "Image of turntable data taken over a wide angle"},
};

const main_window_controls& main_window() {
    return win;
}

static void build_files(wi_obj* fm) {
    win.rdfil = wi_mk_filesel(wi_form_parent(fm, 1, 8, 80, 14), "Raw Data File:", def.fltr, 0.17);
    wi_filesel_chng_cb(win.rdfil, filewin_cb, 1);
    wi_set_tooltip(win.rdfil, "A gate file or a CDF pattern file; return loads it");
    win.jfil = wi_mk_filesel(wi_form_parent(fm, 1, 15, 80, 21), "Journal File:", "*.jou*", 0.17);
    wi_filesel_chng_cb(win.jfil, filewin_cb, 2);
    wi_set_tooltip(win.jfil, "A journal; return replays it");
    win.write = wi_mk_button(wi_form_parent(fm, 84, 8.2, 99, 13.8), "WRITE", 0, write_pfx_cb, 1);
    wi_set_tooltip(win.write, "The data in memory as a new raw data file");
    win.save = wi_mk_button(wi_form_parent(fm, 84, 15.2, 99, 20.8), "SAVE", 0, filewin_cb, 1);
    wi_set_tooltip(win.save, "Ends the journal, writes it, and starts again on the same file");
}

static void build_parameters(wi_obj* fm) {
    wi_obj* frame = wi_mk_frame(wi_form_parent(fm, 1, 29, 56, 60));
    wi_obj* inside = wi_mk_form(frame, 100, 100);
    wi_mk_label(wi_form_parent(inside, 2, 2, 50, 16), "Input Parameters", 0);
    win.style =
        wi_mk_button(wi_form_parent(inside, 56, 2, 98, 17), "Input Parameter Style", 0, chg_parmstyle, 0);
    wi_set_tooltip(win.style, "Units or sample numbers");
    for (int i = 0; i < 4; i++) {
        const double y = 20 + 20 * i;
        win.numfld[i] = wi_mk_numfld(wi_form_parent(inside, 2, y, 98, y + 19), fields[i].label[0], 0.45, 6);
        wi_hlp_setstr(win.numfld[i], fields[i].help);
    }
}

static void build_analyses(wi_obj* fm) {
    constexpr int rows = 4, columns = 2;
    wi_obj* frame = wi_mk_frame(wi_form_parent(fm, 58, 29, 99, 60));
    wi_obj* inside = wi_mk_form(frame, 100, 100);
    wi_obj* cells = wi_mk_rectary(wi_form_parent(inside, 1, 2, 99, 76), rows, columns, 0.03, 0.12);
    int i = 0;
    for (const analysis_button& analysis : analyses) {
        win.analysis[i] = wi_mk_button(cells, analysis.text, 0, filewin_cb, analysis.tag);
        wi_set_tooltip(win.analysis[i++], analysis.tip);
    }
    win.decimate = wi_mk_button(wi_form_parent(inside, 2.5, 80, 31, 96), "Decimate", 0, dec_cb, 0);
    wi_set_tooltip(win.decimate, "Fewer samples over the same span, by these factors");
    const char* const labels[2] = {"Time:", "Freq:"};
    for (int d = 0; d < 2; d++) {
        const double x = 34 + 33 * d;
        win.decimation[d] = wi_mk_incdecfld(wi_form_parent(inside, x, 80, x + 31, 96), labels[d], 0.44, 1);
        wi_incdecfld_decimals(win.decimation[d], 0);
        wi_incdecfld_set_cb(win.decimation[d], dec_cb, 1, dec_cb, 2, nullptr, 0);
    }
}

static void build_journal(wi_obj* fm) {
    win.jfld = wi_mk_incdecfld(wi_form_parent(fm, 1, 22, 40, 28), "Journal Position:", 0.42, 1);
    wi_incdecfld_decimals(win.jfld, 0);
    wi_incdecfld_set_cb(win.jfld, mng_jrnl, 1, mng_jrnl, 2, mng_jrnl, 0);
    wi_set_tooltip(win.jfld, "Goes to a step of the analysis (Ctrl+Z back, Ctrl+Y forward)");
    win.epg_toggle = wi_mk_button(wi_form_parent(fm, 58, 22.2, 80, 27.8), "See Journal Info", 0, chg_epg, 0);
    win.defaults = wi_mk_button(wi_form_parent(fm, 84, 22.2, 99, 27.8), "User Defaults", 0, dflt_cb, 1);
    wi_set_tooltip(win.defaults, "What the analysis windows start from");
}

void build_main_window() {
    win = {};
    wi_set_window_name("NORVA: main");
    wi_obj* fm = win.top = wi_mk_form(nullptr, 100, 100);
    wi_hlp_setprog(fm, "norva");
    wi_zuvapp_quit(fm, 1, "Close", quit_cb, 0);
    wi_mk_button(wi_form_parent(fm, 1, 1, 12, 6.6), "QUIT", 0, quit_cb, 0);
    wi_mk_label(wi_form_parent(fm, 14, 0.5, 86, 7), "NORVA - Program for Complex Image Analysis", 1 + 4);
    build_files(fm);
    build_journal(fm);
    build_parameters(fm);
    build_analyses(fm);
    reset_decimation_factors();
    win.epg = wi_mk_editpage(wi_form_parent(fm, 1, 61, 99, 99));
    wi_size(fm, 700, 550);
    wi_position(fm, 150, 0);
    norva_reg(fm, "Main");
}

void label_numflds() {
    for (int i = 0; i < 4; i++) {
        wi_numfld_label(win.numfld[i], fields[i].label[user.pstyle]);
        wi_numfld_decimals(win.numfld[i], user.pstyle == 1 ? 0 : 6);
    }
}

void show_window_values(const double units[4], const int samples[4]) {
    for (int i = 0; i < 4; i++) {
        wi_numfld_putval(win.numfld[i], user.pstyle == 1 ? samples[i] : units[i]);
        shown.text[i] = wi_numfld_getstr(win.numfld[i]);
        shown.samples[i] = samples[i];
    }
}

void show_numflds(int nt_shown) {
    const double units[4] = {user.f0, user.bw, user.t0,
                             nt_shown == user.nt ? user.dwell : nt_shown * user.dt};
    const int samples[4] = {user.nf0, user.nf, user.nt0, nt_shown};
    show_window_values(units, samples);
}

void show_numflds() {
    show_numflds(user.nt);
}

// The window that a new one must lie in: the one the data in memory hold, and at position 0 the whole file.
static data_window window_in_force() {
    if (user.count == 0) return {1, gp.nf, 1, gp.nrec};
    return user.pfdata ? loaded_window() : user_window();
}

int read_numflds() {
    window_field fields_read[4];
    for (int i = 0; i < 4; i++)
        fields_read[i] = {.typed = wi_numfld_getval(win.numfld[i]),
                          .untouched = wi_numfld_getstr(win.numfld[i]) == shown.text[i],
                          .sample = shown.samples[i]};
    const window_verdict verdict = take_window(fields_read, user.pstyle, window_in_force());
    if (verdict != window_verdict::one_point) show_numflds();
    if (verdict == window_verdict::ok) return 1;
    popmsg(window_message(verdict));
    return 0;
}

void norva_enable_flds(int enable) {
    fields_open = enable != 0;
    refresh_controls();
}

void show_count() {
    wi_incdecfld_putval(win.jfld, user.count);
    refresh_controls();
}

int decimation_factor(int direction) {
    return std::max(1, wi_get_int(win.decimation[direction]));
}

void reset_decimation_factors() {
    for (wi_obj* field : win.decimation) wi_incdecfld_putval(field, 1);
}

void filter_raw_files() {
    wi_filesel_setdir(win.rdfil, def.fltr);
}

int typed_position() {
    return wi_get_int(win.jfld);
}

void select_raw_file(const std::string& name) {
    wi_filesel_putstr(win.rdfil, name);
}

void select_journal_file(const std::string& name) {
    wi_filesel_putstr(win.jfil, name);
}

void show_edit_page(const std::string& text) {
    wi_editpage_putstr(win.epg, text);
}

void refresh_controls() {
    if (!win.top) return;
    const bool idle = !analysis_window_open();
    const bool file = !user.rdfile.empty() && data_type != raw_kind::none;
    wi_enable(win.rdfil, idle);
    wi_enable(win.jfil, idle && eoj == 0);
    wi_enable(win.save, idle && eoj != 0);
    wi_enable(win.style, idle && file);
    wi_enable(win.epg_toggle, eoj != 0 && file);
    for (std::size_t i = 0; i < std::size(analyses); i++)
        wi_enable(win.analysis[i], idle && file && !(msgwinon && analyses[i].tag == 10));
    plr_kw_refresh(idle && file);
    wi_enable(win.decimate, idle && file && !msgwinon);
    for (wi_obj* field : win.decimation) wi_enable(field, fields_open && idle && !msgwinon);
    wi_enable(win.jfld, fields_open && idle && eoj != 0);
    for (wi_obj* field : win.numfld) wi_enable(field, fields_open && idle);
    refresh_poles();
    wi_button_label(win.epg_toggle, user.estyle == 1 ? "See Raw Data File Info" : "See Journal Info");
}

} // namespace norva
