// The window in which the output data file is named.
#include "app/write_pfx.h"

#include "state/run.h"
#include "state/write_out.h"
#include "toolkit/toolkit.h"

namespace norva {

static struct {
    wi_obj* fm = nullptr;
    wi_obj* name = nullptr;
} win;

void writewin_init() {
    win = {};
    wi_set_window_name("NORVA: write output data file");
    win.fm = wi_mk_form(nullptr, 100, 100);
    wi_hlp_setprog(win.fm, "norva:write");
    wi_zuvapp_quit(win.fm, 1, "Close", write_pfx_cb, 0);
    win.name = wi_mk_strfld(wi_form_parent(win.fm, 1, 4, 99, 50), "Output Data File Name (.pfx):", 0.45);
    wi_strfld_set_cb(win.name, write_pfx_cb, 2);
    wi_mk_button(wi_form_parent(win.fm, 10, 54, 42, 96), "Write File", 0, write_pfx_cb, 2);
    wi_mk_button(wi_form_parent(win.fm, 58, 54, 90, 96), "Cancel", 0, write_pfx_cb, 0);
    wi_size(win.fm, 400, 50);
    wi_position(win.fm, 300, 300);
}

void write_pfx_cb(wi_obj*, int tag) {
    if (tag == 1) {
        wi_on(win.fm);
        return;
    }
    if (tag == 2) {
        const std::string name = wi_strfld_getstr(win.name);
        if (imgwinon) {
            reduced = {};
            write_hooks.image_hands_over();
        }
        write_pfx(name);
        reduced = {};
    }
    wi_off(win.fm);
}

} // namespace norva
