// The handlers of the main window.
#include "app/main_window.h"

#include "app/cdf_input.h"
#include "app/gpf.h"
#include "app/kwin.h"
#include "app/messages.h"
#include "app/names.h"
#include "app/quit.h"
#include "app/replay.h"
#include "app/user_defaults.h"
#include "app/window_values.h"
#include "app/write_pfx.h"
#include "image/ximag.h"
#include "journal/journal.h"
#include "journal/store.h"
#include "main_window_int.h"
#include "mocomp/polar_keywords.h"
#include "mocomp/polar_window.h"
#include "profiles/doppler_window.h"
#include "profiles/range_window.h"
#include "signal/progress.h"
#include "state/calls.h"
#include "state/defaults.h"
#include "state/run.h"
#include "state/user.h"
#include "state/write_out.h"
#include "toolkit/toolkit.h"
#include "zuvsys/strprintf.h"

namespace norva {

constexpr int MOST_FREQUENCIES =
    1024; // work arrays of the profile routines; tested here so that they need not

// Ends a running journal. False when it could not be saved; then everything stays as it is.
static bool end_journal() {
    if (eoj != 0) {
        quit_cb(main_window().save, 1);
        if (journal_unsaved()) return false;
    }
    eoj = 0;
    user.count = 0;
    user.mc.ptr = user.mc.nrecs = 0;
    yx_scale = 1;
    return true;
}

// The journal that an analysis of this raw file would start: in the current folder, under a free name.
static std::string free_journal_name(const std::string& rdfile) {
    constexpr std::size_t longest = JOURNAL_NAME_BYTES - 1 - (sizeof(".jou;512") - 1);
    const std::string name = rename_file(rootname(rdfile)).substr(0, longest) + ".jou";
    return versno(name, 1).value_or(name);
}

static void take_raw_file(wi_obj* wo) {
    kwin_leave(); // it belongs to the file before
    if (user.estyle == 1) chg_epg(wo, 0);
    if (wo && !end_journal()) return;

    user.rdfile = wi_filesel_getstr(main_window().rdfil);
    wi_filesel_setdir(main_window().rdfil, getdir(user.rdfile));
    user.pfdata.clear();
    const std::string header = get_gpf_hdr();
    if (header.empty()) return;
    ehdr = header;
    show_edit_page(ehdr);
    user.wfri = gp.wfri;
    user.sigtype = gp.sigtype;
    // A negative or undefined pulse length counts as none.
    user.rh = user.rh > 1 ? 1 : user.rh >= 0 ? user.rh : 0;

    const double units[4] = {gp.f0, gp.bw, gp.t0, gp.nrec * static_cast<double>(gp.wfri)};
    const int samples[4] = {1, gp.nf, 1, gp.nrec};
    show_window_values(units, samples);
    norva_enable_flds(1);
    show_count();
    if (wo) {
        select_journal_file(free_journal_name(user.rdfile));
        show_count();
    }
    ximag_new_file();
    def.pi_ifx = def.pi_ify = 2;
}

static void forget_journal() {
    jrnl(95);
    eoj = user.count = 0;
    user.mc.ptr = user.mc.nrecs = 0;
    user.rdfile.clear();
}

static void take_journal() {
    if (eoj != 0) {
        select_journal_file(user.jfile);
        return;
    }
    const std::string name = wi_filesel_getstr(main_window().jfil);
    wi_filesel_setdir(main_window().jfil, getdir(name));
    if (name.empty()) return;
    user.jfile = name;
    mng_jrnl(nullptr, -1);
    if (user.rdfile.empty()) {
        forget_journal();
        return;
    }
    select_raw_file(user.rdfile);
    select_journal_file(user.jfile);
    filewin_cb(nullptr, 1);
    if (kwinon) return; // the keyword window goes on from here
    if (user.rdfile.empty() || data_type == raw_kind::none) {
        forget_journal();
        return;
    }
    user.count = eoj;
    mng_jrnl(nullptr, 0);
    show_count();
}

// The checks ahead of every analysis. True when the window of data is in memory and fit for it.
static bool prepare(wi_obj* wo, int tag) {
    if (kwinon) {
        kwin_show();
        return false;
    }
    if (user.rdfile.empty()) return false;
    select_raw_file(user.rdfile);
    if (!read_numflds()) return false;
    if (wo || tag == 13) {
        if (user.count == 0) user.pfdata.clear();
        const data_window held = loaded_window();
        get_gpf_data(user.count, held.nf0, held.nt0, held.nf);
    }
    if (!user.pfdata) {
        popmsg("ERROR(2) in filewin_cb()/norva -- no raw data!");
        return false;
    }
    if (user.nf > MOST_FREQUENCIES) {
        popmsg("The number of frequencies must be <=1024");
        return false;
    }
    if (ntime == 1 && tag != 9) {
        popmsg("Single time - Only image crossrange cuts available!");
        return false;
    }
    if (tag >= 6 && tag <= 12 && stsf == 0) {
        if (user.nt < 3) {
            popmsg("The number of time pulses must be >= 3");
            return false;
        }
        if (user.nf < 3) {
            popmsg("The number of frequency samples must be >=3");
            return false;
        }
    }
    return true;
}

// The first two records of a journal, before any window opens. False after a message, when the journal cannot
// be kept (its name, or that of the raw file, is too long for it).
static bool begin_journal() {
    user.jfile = wi_filesel_getstr(main_window().jfil);
    if (auto version = versno(user.jfile, 1)) user.jfile = *version;
    select_journal_file(user.jfile);
    if (user.jfile.size() >= JOURNAL_NAME_BYTES) {
        popmsg(strprintf("The journal's name must be shorter than %d characters!", JOURNAL_NAME_BYTES));
        return false;
    }
    jrnl(90);
    jrnl(0);
    return journal_next_index() > 0;
}

// A replay that failed has left the journal mute and the data away: the position is built before anything is
// done on it. At position 0 that is the fresh read of every analysis. True when the analysis can go on.
static bool position_stands() {
    if (user.count == 0) {
        managing = 0;
        return true;
    }
    mng_jrnl(nullptr, 0);
    return managing == 0 && !analysis_window_open();
}

static void start_analysis(wi_obj* wo, int tag) {
    const bool by_user = wo || tag == 13;
    if (by_user && managing && eoj != 0 && !position_stands()) return;
    if (!prepare(wo, tag)) return;
    if (eoj == 0 && !(stsf == 1 && tag == 9) && !begin_journal()) return;
    if (tag == 13) {
        dec_ok = 1;
        return;
    }
    norva_enable_flds(0);
    if (tag == 8) xrp(1);
    if (tag == 9) ximag();
    if (tag == 10) xdp();
    if (!analysis_window_open()) norva_enable_flds(1); // a message on the way kept it shut
}

void filewin_cb(wi_obj* wo, int tag) {
    if (wo && analysis_window_open()) return;
    if (wo && tag == 10 && msgwinon) return; // its window would not open; nothing is begun for it
    switch (tag) {
    case 1: take_raw_file(wo); break;
    case 2: take_journal(); break;
    case 8:
    case 9:
    case 10:
    case 13: start_analysis(wo, tag); break;
    case 14:
        if (prepare(wo, tag)) plr_kw_init();
        break;
    default: return;
    }
    refresh_controls();
}

void chg_epg(wi_obj*, int) {
    if (eoj == 0 || user.rdfile.empty()) return;
    user.estyle = !user.estyle;
    if (user.estyle == 1)
        jrnl(96);
    else
        show_edit_page(ehdr);
    refresh_controls();
}

void chg_parmstyle(wi_obj*, int) {
    if (user.rdfile.empty() || !read_numflds()) return;
    user.pstyle = !user.pstyle;
    label_numflds();
    show_numflds();
}

// "Downsize" in a profile window: user holds the narrowed window, the data in memory the old one.
static int downsize(int nf0, int nt0, int nf) {
    get_gpf_data(1, nf0, nt0, nf);
    if (!user.pfdata) return 0;
    cvrt_user_vals(1);
    show_numflds();
    return 1;
}

static bool step_by_key(wi_obj*, char key) {
    if ((key != 'Z' && key != 'Y') || msgwinon || kwinon || quit_window_up()) return false;
    if (imgwinon) // its own steps come before the journal's
        ximag_step(key == 'Z' ? IMAGE_STEP_BACK : IMAGE_STEP_FORWARD);
    else if (eoj != 0)
        mng_jrnl(nullptr, key == 'Z' ? 2 : 1);
    return true;
}

static void connect_modules() {
    app_hooks.popmsg = msgwin_show;
    app_hooks.rpt_progress = progress_show;
    app_hooks.computing = progress_scope;
    signal_hooks.progress = rpt_progress2;
    journal_hooks.show_count = [] {
        if (!rpwinon && !dpwinon && !pkswinon && !mcwinon) show_count();
    };
    journal_hooks.enable_fields = norva_enable_flds;
    journal_hooks.show_listing = show_edit_page;
    journal_hooks.show_journal_name = [] { select_journal_file(user.jfile); };
    journal_hooks.mng_jrnl = replay_journal;
    rp_hooks.downsize = downsize;
    journal_hooks.head_note = pole_note;
    write_hooks.image_hands_over = [] {
        if (imgwinon) ximag_bttn(nullptr, PI_WRITE);
    };
    // As by the button: the window of data may have changed since the polar format window came up.
    polar_hooks.open_image = [] { filewin_cb(main_window().top, 9); };
    xi_hooks.polar_up = plr_kw_stat;
    xi_hooks.polar_off = plr_kw_off;
    xi_hooks.geometry = get_pkw;
    wi_hooks.shortcut = step_by_key;
}

void filewin_init() {
    data_type = raw_kind::none;
    connect_modules();
    build_main_window();
    label_numflds();
    msgwin_init();
    progress_init();
    quitwin_init();
    kwin_build();
    polwin_init();
    plr_kw_reset();
    reset_kws();
    writewin_init();
    dfltwin_init();
    norva_enable_flds(0);
    wi_on(main_window().top);
}

} // namespace norva
