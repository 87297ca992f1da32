// The window of user defaults: two pages of eighteen fields.
#include "app/user_defaults.h"

#include "app/main_window.h"
#include "state/run.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

#include <array>
#include <cmath>
#include <limits>

namespace norva {

constexpr int FIELDS = 36, PER_PAGE = 18;
constexpr int FIRST_ROW = 2; // rows of the record ahead of the first that has a field
constexpr double MOST = std::numeric_limits<float>::max();

static struct {
    wi_obj* fm = nullptr;
    wi_obj* heading = nullptr;
    wi_obj* flip = nullptr;
    wi_obj* file = nullptr;
    wi_obj* toggle = nullptr;
    wi_obj* filter = nullptr;
    std::array<wi_obj*, 2> page{};
    std::array<wi_obj*, FIELDS> field{};
    int shown = 0; // page
} dw;

static const default_row& row_of(int field) {
    return default_rows()[static_cast<std::size_t>(field + FIRST_ROW)];
}

void dfltwin_init() {
    dw = {};
    wi_set_window_name("NORVA: defaults");
    wi_obj* fm = dw.fm = wi_mk_form(nullptr, 100, 100);
    wi_hlp_setprog(fm, "norva:user defaults");
    wi_zuvapp_quit(fm, 1, "Close", dflt_cb, 0);
    wi_mk_button(wi_form_parent(fm, 2, 1, 22, 6.5), "DISMISS", 0, dflt_cb, 0);
    wi_mk_label(wi_form_parent(fm, 24, 1, 76, 6.5), "User Defaults", 1 + 4);
    dw.heading = wi_mk_label(wi_form_parent(fm, 2, 7.5, 60, 12), "defaults 1 - 18", 0);
    dw.flip = wi_mk_button(wi_form_parent(fm, 78, 1, 98, 6.5), "NEXT", 0, dflt_cb, 4);
    for (int p = 0; p < 2; p++) {
        dw.page[p] = wi_mk_rectary(wi_form_parent(fm, 2, 12, 98, 80), PER_PAGE, 1, 0, 0);
        for (int i = p * PER_PAGE; i < (p + 1) * PER_PAGE; i++) {
            dw.field[i] = wi_mk_numfld(dw.page[p], row_of(i).label, 0.62, 4);
            wi_hlp_setstr(dw.field[i], row_of(i).label);
        }
    }
    dw.toggle = wi_mk_button(wi_form_parent(fm, 2, 81, 98, 86), "Load default file upon program start", 1,
                             dflt_cb, 100);
    dw.filter = wi_mk_strfld(wi_form_parent(fm, 2, 87, 98, 92), "Default data directory:", 0.4);
    dw.file = wi_mk_filesel(wi_form_parent(fm, 2, 93, 76, 98), "File:", "*.dflt", 0.14);
    wi_filesel_chng_cb(dw.file, dflt_cb, 2);
    wi_mk_button(wi_form_parent(fm, 78, 93, 98, 98.5), "WRITE", 0, dflt_cb, 3);
    wi_size(fm, 400, 400);
    wi_position(fm, 300, 100);
    norva_reg(fm, "Defaults");
}

static void show_page() {
    wi_label(dw.heading, dw.shown == 0 ? "defaults 1 - 18" : "defaults 19 - 36");
    wi_button_label(dw.flip, dw.shown == 0 ? "NEXT" : "PREV");
    wi_off(dw.page[1 - dw.shown]);
    wi_on(dw.page[dw.shown]);
}

static void show_flag() {
    wi_button_setstate(dw.toggle, dflt_autoload_flag);
    wi_button_label(dw.toggle, dflt_autoload_flag ? "Load default file upon program start"
                                                  : "Do not load default file upon program start");
}

static void fill() {
    for (int i = 0; i < FIELDS; i++) wi_numfld_putval(dw.field[i], def.*row_of(i).field);
    wi_strfld_putstr(dw.filter, def.fltr);
    wi_filesel_putstr(dw.file, def.fname);
    show_flag();
}

static void take_fields() {
    // What is no number of the file's form keeps the value that was in force.
    for (int i = 0; i < FIELDS; i++) {
        const double typed = wi_numfld_getval(dw.field[i]);
        if (std::fabs(typed) <= MOST) def.*row_of(i).field = static_cast<float>(typed);
    }
    def.fname = wi_filesel_getstr(dw.file);
    def.fltr = wi_strfld_getstr(dw.filter);
}

void dflt_cb(wi_obj*, int tag) {
    switch (tag) {
    case 0: wi_off(dw.fm); break;
    case 1:
        wi_on(dw.fm);
        show_page();
        fill();
        break;
    case 2:
        if (!rw_dflt_file(wi_filesel_getstr(dw.file), "r")) return;
        def.fname = wi_filesel_getstr(dw.file);
        fill();
        filter_raw_files();
        break;
    case 3:
        take_fields();
        rw_dflt_file(def.fname, "w");
        filter_raw_files();
        break;
    case 4:
        dw.shown = 1 - dw.shown;
        show_page();
        break;
    case 100:
        dflt_autoload_flag = !dflt_autoload_flag;
        show_flag();
        break;
    default: break;
    }
}

} // namespace norva
