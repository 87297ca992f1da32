// The keyword window.
#include "app/kwin.h"

#include "app/gpf.h"
#include "app/main_window.h"
#include "fileio/gat.h"
#include "journal/journal.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"
#include "zuvsys/strprintf.h"

#include <array>

namespace norva {

enum row {
    SOURCE,
    TARGET,
    TRACK,
    MOTION,
    SIGNAL,
    START,
    INTERVAL,
    NREC,
    FIRST,
    STEP,
    NFREQ,
    PULSE,
    SIGN,
    ROWS
};

enum class row_kind { text, signal, number };
struct row_words {
    const char* label;
    row_kind kind;
    int decimals;
};
static constexpr std::array<row_words, ROWS> rows = {{
    {"Data source", row_kind::text, 0},
    {"Target type", row_kind::text, 0},
    {"Tracking info", row_kind::text, 0},
    {"Motion comp", row_kind::text, 0},
    {"Signal type", row_kind::signal, 0},
    {"Start time (sec)", row_kind::number, 8},
    {"Waveform repetition interval (sec)", row_kind::number, 8},
    {"Number of time samples", row_kind::number, 0},
    {"First frequeny (Mhz)", row_kind::number, 8},
    {"Frequency sample spacing (MHz)", row_kind::number, 8},
    {"Number of frequency samples", row_kind::number, 0},
    {"Pulse length (sec)", row_kind::number, 8},
    {"KSX (-1 or 1)", row_kind::number, 0},
}};

static struct {
    wi_obj* fm = nullptr;
    std::array<wi_obj*, ROWS> row{};
} kw;

void kwin_build() {
    wi_set_window_name("NORVA: manual kw input");
    kw.fm = wi_mk_form(nullptr, 100, 100);
    wi_hlp_setprog(kw.fm, "norva:manual kw input");
    wi_zuvapp_quit(kw.fm, 1, "Close", kwin_cb, 0);
    wi_mk_label(wi_form_parent(kw.fm, 2, 1, 98, 9), "Manual Keyword Input", 1 + 4);
    wi_obj* cells = wi_mk_rectary(wi_form_parent(kw.fm, 2, 10, 98, 88), ROWS, 1, 0, 0);
    constexpr double split = 0.52;
    for (int i = 0; i < ROWS; i++) {
        switch (rows[i].kind) {
        case row_kind::text: kw.row[i] = wi_mk_strfld(cells, rows[i].label, split); break;
        case row_kind::signal:
            kw.row[i] = wi_mk_listsel(cells, rows[i].label, 0, split,
                                      {std::begin(signal_types), std::end(signal_types)});
            break;
        case row_kind::number: kw.row[i] = wi_mk_numfld(cells, rows[i].label, split, rows[i].decimals); break;
        }
    }
    wi_mk_button(wi_form_parent(kw.fm, 12, 90, 42, 98), "SAVE KWS", 0, kwin_cb, 1);
    wi_mk_button(wi_form_parent(kw.fm, 58, 90, 88, 98), "CANCEL", 0, kwin_cb, 0);
    wi_size(kw.fm, 400, 350);
    wi_position(kw.fm, 800, 300);
    norva_reg(kw.fm, "Manual Keyword Input");
}

static void put_presets(const header_numbers& found) {
    for (int i : {SOURCE, TARGET, TRACK, MOTION}) wi_strfld_putstr(kw.row[i], "");
    wi_listsel_putstr(kw.row[SIGNAL], signal_types[gp.sigtype]);
    wi_numfld_putval(kw.row[START], found.t0);
    wi_numfld_putval(kw.row[INTERVAL], found.wfri);
    wi_numfld_putval(kw.row[NREC], found.nrec);
    wi_numfld_putval(kw.row[FIRST], found.f0 * 1e-6);
    wi_numfld_putval(kw.row[STEP], found.df * 1e-6);
    wi_numfld_putval(kw.row[NFREQ], found.nf);
    wi_numfld_putval(kw.row[PULSE], found.plen);
    wi_numfld_putval(kw.row[SIGN], found.ksx);
}

void kwin_init(const header_numbers& found) {
    put_presets(found);
    kwinon = 1;
    kwin_show();
}

void kwin_show() {
    wi_on(kw.fm);
}

std::string kwin_signal_text() {
    return wi_listsel_getstr(kw.row[SIGNAL]);
}

header_numbers get_kw_vals() {
    gp.sigtype = std::max(0, wi_listsel_getindex(kw.row[SIGNAL]));
    kw_ss = {wi_strfld_getstr(kw.row[SOURCE]), wi_strfld_getstr(kw.row[TARGET]),
             wi_strfld_getstr(kw.row[TRACK]), wi_strfld_getstr(kw.row[MOTION])};
    return {.nrec = wi_get_int(kw.row[NREC]),
            .nf = wi_get_int(kw.row[NFREQ]),
            .ksx = wi_get_int(kw.row[SIGN]),
            .t0 = wi_numfld_getval(kw.row[START]),
            .wfri = wi_numfld_getval(kw.row[INTERVAL]),
            .f0 = wi_numfld_getval(kw.row[FIRST]) * 1e6,
            .df = wi_numfld_getval(kw.row[STEP]) * 1e6,
            .plen = wi_numfld_getval(kw.row[PULSE])};
}

// Writes the keywords in order up to the first that fails. Returns the file layer's status.
static int write_keywords(_gatfile* file, const header_numbers& values) {
    int status = ZUV_OK;
    const auto put = [&](const char* name, auto value) {
        if (status != ZUV_OK) return;
        if constexpr (std::is_same_v<decltype(value), int>)
            status = u_kwput_i(file, name, value);
        else if constexpr (std::is_same_v<decltype(value), double>)
            status = u_kwput_d(file, name, value);
        else
            status = u_kwput_s(file, name, value);
    };
    const auto put_text = [&](const char* name, const std::string& text) {
        if (!text.empty()) put(name, text);
    };
    put_text("DATA_SOURCE", kw_ss.data_source);
    put_text("TARGET_TYPE", kw_ss.target_type);
    put_text("TRACK_INFO", kw_ss.track_info);
    put_text("MOT_COMP", kw_ss.mot_comp);
    put("SIG_TYPE", std::string(signal_types[gp.sigtype]));
    put("NREC", values.nrec);
    put("T0", values.t0);
    put("WFRI", values.wfri);
    if (values.wfri != 0) put("PRF", 1 / values.wfri);
    put("PULSE_LENGTH", values.plen);
    put("NFREQ", values.nf);
    put("STEP_FREQ", values.df);
    put("FIRST_FREQ", values.f0);
    put("KSX", values.ksx);
    return status;
}

int save_kws() {
    gatfile_ptr file = opengat(user.rdfile, "Update", gp.nf);
    if (!file) {
        popmsg("Unable to open file " + user.rdfile + " for writing!");
        return 0;
    }
    int status = write_keywords(file.get(), get_kw_vals());
    const int closed = zuvfileclose(std::move(file));
    if (status == ZUV_OK) status = closed;
    if (status == ZUV_OK) return 1;
    popmsg(strprintf("Error(%d) writing keyword to file ", status) + user.rdfile);
    return 0;
}

void kwin_leave() {
    wi_off(kw.fm);
    kwinon = 0;
}

void kwin_cb(wi_obj*, int tag) {
    kwin_leave();
    if (tag == 0) {
        user.rdfile.clear();
    } else if (tag == 1) {
        acc = save_kws() <= 0;
        if (eoj != 0) {
            filewin_cb(nullptr, 1);
            user.count = eoj;
            show_count();
            // The journal that was being opened goes on to its end, now that its file can be read.
            if (!user.rdfile.empty() && !kwinon) mng_jrnl(nullptr, 0);
        } else {
            filewin_cb(main_window().rdfil, 1);
        }
        acc = false;
    }
    refresh_controls();
}

} // namespace norva
