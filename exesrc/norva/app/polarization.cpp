// The window that chooses the polarization of a CDF file.
#include "app/cdf_input.h"

#include "fileio/cdf.h"
#include "state/run.h"
#include "state/user.h"
#include "toolkit/toolkit.h"

#include <algorithm>
#include <array>

namespace norva {

std::string poles = "HH";

static constexpr int TOGGLES = 8, DONE = 8;

static struct {
    wi_obj* fm = nullptr;
    std::array<wi_obj*, TOGGLES> toggle{};
} win;

static void press(int pressed) {
    for (int i = 0; i < TOGGLES; i++) wi_button_setstate(win.toggle[i], i == pressed);
    poles = cdf_poles[pressed];
}

void polwin_init() {
    win = {};
    wi_set_window_name("NORVA: polarization");
    win.fm = wi_mk_form(nullptr, 100, 100);
    wi_hlp_setprog(win.fm, "norva:polarization");
    wi_zuvapp_quit(win.fm, 1, "Close", close_choose, DONE);
    wi_mk_label(wi_form_parent(win.fm, 2, 2, 98, 16), "POLARIZATION", 1 + 4);
    wi_obj* cells = wi_mk_rectary(wi_form_parent(win.fm, 4, 18, 96, 80), 4, 2, 0.04, 0.06);
    for (int i = 0; i < TOGGLES; i++) win.toggle[i] = wi_mk_button(cells, cdf_poles[i], 1, close_choose, i);
    wi_mk_button(wi_form_parent(win.fm, 30, 83, 70, 98), "Done", 0, close_choose, DONE);
    wi_size(win.fm, 200, 175);
    wi_position(win.fm, 800, 430);
    press(0);
}

void choose_pol_init() {
    wi_on(win.fm);
}

void choose_pol_leave() {
    wi_off(win.fm);
}

void close_choose(wi_obj*, int tag) {
    if (tag == DONE)
        choose_pol_leave();
    else if (tag >= 0 && tag < TOGGLES)
        press(wi_button_getstate(win.toggle[tag]) ? tag : 0);
}

std::string pole_note() {
    return is_cdf(user.rdfile) ? poles : "";
}

void choose_pole(const std::string& note) {
    const auto* const found = std::ranges::find(cdf_poles, note);
    if (found != std::end(cdf_poles)) press(static_cast<int>(found - cdf_poles));
}

void refresh_poles() {
    for (wi_obj* toggle : win.toggle)
        if (toggle) wi_enable(toggle, eoj == 0);
}

} // namespace norva
