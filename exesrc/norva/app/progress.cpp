// The progress window. During a computation draw areas get no paint notices, so the line is a coloured
// control whose share of the width grows.
#include "app/messages.h"

#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <chrono>

namespace norva {

using steady = std::chrono::steady_clock;
constexpr std::chrono::milliseconds PATIENCE{300}; // computations shorter than this show nothing

static struct {
    wi_obj* fm = nullptr;
    wi_obj* split = nullptr;
    steady::time_point began;
    bool up = false;
    int depth = 0;
} pw;

void progress_init() {
    pw = {};
    wi_set_window_name("Processing...");
    pw.fm = wi_mk_form(nullptr, 100, 100);
    wi_zuvapp_quit(pw.fm, 0, "", nullptr, 0);
    wi_mk_label(wi_form_parent(pw.fm, 5, 10, 95, 45), "Processing...", 0);
    pw.split = wi_mk_drect(wi_form_parent(pw.fm, 5, 55, 95, 85), 1, 0.01);
    wi_obj* line = wi_mk_colorbut(pw.split, nullptr, 0);
    wi_colorbut_setcolor(line, 3);
    wi_colorbut_editable(line, 0);
    wi_mk_label(pw.split, "", 0);
    wi_size(pw.fm, 200, 50);
    wi_position(pw.fm, 400, 400);
    norva_reg(pw.fm, "Processing");
    the_port().keep_above(getparenthandle(pw.fm));
}

static void hide() {
    if (!pw.up) return;
    wi_off(pw.fm);
    pw.up = false;
}

void progress_show(int indx, int ntot) {
    if (ntot < 3) return;
    if (indx <= 1) pw.began = steady::now();
    if (indx >= ntot) {
        hide();
        return;
    }
    if (!pw.up) {
        if (steady::now() - pw.began < PATIENCE) return;
        wi_drect_split(pw.split, 0.01);
        wi_on(pw.fm);
        pw.up = true;
    }
    wi_drect_split(pw.split, std::clamp(static_cast<double>(indx) / ntot, 0.01, 0.99));
    the_port().pump();
}

void rpt_progress2(int indx, int ntot) {
    progress_show(indx, ntot);
}

void progress_scope(bool on) {
    if (on) {
        if (pw.depth++ == 0) {
            pw.began = steady::now();
            the_port().busy(true);
        }
        return;
    }
    if (--pw.depth == 0) {
        hide();
        the_port().busy(false);
    }
}

} // namespace norva
