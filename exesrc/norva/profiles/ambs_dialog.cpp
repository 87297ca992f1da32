// The dialog that asks for the number of Doppler ambiguities to remove.
#include "range_int.h"

#include "state/run.h"
#include "state/window_register.h"
#include "toolkit/toolkit.h"

namespace norva {

static struct {
    wi_obj* window = nullptr;
    wi_obj *number = nullptr, *apply = nullptr;
} dialog;

static void dialog_cb(wi_obj* wo, int tag) {
    if (tag == 130 && msgwinon) return; // the call would be ignored
    rawin_init(nullptr, 0);
    if (tag == 130) xrp_cb(wo, tag);
}

static void build_dialog() {
    wi_set_window_name("Remove Doppler Ambs");
    dialog.window = wi_mk_form(nullptr, 320, 70);
    wi_hlp_setprog(dialog.window, "norva:range profile");
    dialog.number = wi_mk_numfld(wi_form_parent(dialog.window, 8, 4, 312, 34),
                                 "Number of Doppler ambiguities to remove:", 0.8, 0);
    wi_numfld_set_cb(dialog.number, dialog_cb, 130);
    dialog.apply = wi_mk_button(wi_form_parent(dialog.window, 50, 40, 140, 64), "Apply", 0, dialog_cb, 130);
    wi_mk_button(wi_form_parent(dialog.window, 180, 40, 270, 64), "Cancel", 0, dialog_cb, 0);
    wi_zuvapp_quit(dialog.window, 1, "Cancel", dialog_cb, 0);
    wi_size(dialog.window, 320, 70);
    wi_position(dialog.window, 300, 300);
    norva_reg(dialog.window, "Remove Doppler Ambs");
    the_port().keep_above(getparenthandle(dialog.window));
}

void rawin_init(wi_obj*, int on) {
    if (!on) {
        if (dialog.window) wi_off(dialog.window);
        return;
    }
    if (!dialog.window) build_dialog();
    wi_on(dialog.window);
    wi_activate_first(dialog.window);
}

void ambs_dialog_refresh() {
    if (dialog.apply) wi_enable(dialog.apply, !msgwinon);
}

void ambs_dialog_reset() {
    dialog = {};
}

double rawin_value() {
    return dialog.number ? wi_numfld_getval(dialog.number) : 0;
}

} // namespace norva
