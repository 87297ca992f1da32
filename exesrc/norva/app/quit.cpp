// The quit window and the ".mc" text file.
#include "app/quit.h"

#include "app/names.h"
#include "journal/crash_file.h"
#include "journal/journal.h"
#include "journal/store.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"
#include "zuvsys/safefile.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <filesystem>

namespace norva {

static wi_obj* quitwin = nullptr;

static void remove_file(const std::string& name) {
    std::error_code ignored;
    std::filesystem::remove(name, ignored);
}

void quitwin_init() {
    wi_set_window_name("NORVA: quit");
    quitwin = wi_mk_form(nullptr, 100, 100);
    wi_hlp_setprog(quitwin, "norva:quit");
    wi_zuvapp_quit(quitwin, 1, "Close", quit_cb, 4);
    wi_mk_label(wi_form_parent(quitwin, 2, 8, 98, 45), "SAVE journal file before quitting?", 1);
    const struct {
        const char* text;
        int tag;
    } buttons[] = {{"Yes", 2}, {"No", 3}, {"Cancel", 4}};
    double x = 8;
    for (const auto& button : buttons) {
        wi_mk_button(wi_form_parent(quitwin, x, 50, x + 24, 90), button.text, 0, quit_cb, button.tag);
        x += 30;
    }
    wi_size(quitwin, 320, 60);
    wi_position(quitwin, 500, 500);
    norva_reg(quitwin, "Quit");
    the_port().keep_above(getparenthandle(quitwin));
}

bool quit_window_up() {
    return quitwin && wi_isvisible(quitwin);
}

std::string mc_file_text() {
    const mcfile& mc = user.mc;
    const int in_force = std::min(mc.ptr, mc.nrecs);
    int delays = 0;
    for (int i = 0; i < in_force; i++) delays += mc.flag[i] != MC_DECIMATE;

    std::string text = "Output Motion Compensation File from NORVA\n";
    text += "Data file: " + user.rdfile + "\n";
    text += "Journal file: " + user.jfile + "\n";
    text += "****\n";
    text += strprintf("%f\n%f\n", user.t0, user.bw);
    text += strprintf("%f\n", user.f0 + 0.5 * (mc.nf[0] - 1) * user.df);
    text += strprintf("%f\n%f\n", gp.plen, user.wfri);
    text += strprintf("%d\n%d\n%d\n", mc.flag[0], delays, mc.nt[0] + 1);
    for (int i = 0; i < mc.nrecs; i++) {
        if (mc.flag[i] == MC_DECIMATE) continue;
        text += strprintf("%d\n", mc.nt[i] + 1);
        for (double value : mc.t[i]) text += strprintf("%4.10f\n", value);
    }
    return text;
}

// False after a message, when the journal or the text could not be written.
static bool save() {
    jrnl(89);
    jrnl(93);
    if (journal_unsaved()) {
        popmsg("The journal could not be saved as " + user.jfile +
               "; nothing is lost yet.  Make room or give "
               "write permission and try again.");
        rw_mc("w");
        return false;
    }
    const std::string name = rootname(user.jfile) + ".mc" + version_part(user.jfile);
    std::string why;
    if (!write_text_safely(name, mc_file_text(), &why)) popmsg(why);
    return true;
}

void quit_cb(wi_obj*, int tag) {
    if (tag == 0) {
        wi_on(quitwin);
        return;
    }
    if (quitwin) wi_off(quitwin);
    if (tag == 4) return;
    managing = 0; // a replay that failed leaves the journal mute; what it holds must be saved or deleted all
                  // the same
    const bool journal_running = journal_next_index() > 0;
    remove_file(CRASH_FILE);
    if (tag == 3) {
        if (journal_running) jrnl(95); // deletes the file, if this journal has written it
        remove_file(CRASH_FILE);
        wi_quit(0);
        return;
    }
    if (analysis_window_open()) {
        popmsg("You must close all windows before quitting!");
        return;
    }
    if (journal_running) {
        if (!save()) return;
        remove_file(CRASH_FILE); // the last steps have written it again
    }
    if (tag == 2) wi_quit(0);
}

} // namespace norva
